// import 'pagerex/element' makes <pagerex-viewer> known to the page.

import { PagerexViewer } from './viewer.js';

if (!customElements.get('pagerex-viewer')) customElements.define('pagerex-viewer', PagerexViewer);

export { PagerexViewer };
