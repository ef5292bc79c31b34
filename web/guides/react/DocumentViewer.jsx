import { useEffect, useRef } from 'react';
import 'pagerex/element';

export function DocumentViewer({ document, onLoad, ...rest }) {
  const viewer = useRef(null);
  useEffect(() => {
    viewer.current.load(document).then((result) => result && onLoad?.(result));
  }, [document]);
  return <pagerex-viewer ref={viewer} {...rest} />;
}
