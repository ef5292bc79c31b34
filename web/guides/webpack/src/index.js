import 'pagerex/element';

const viewer = document.createElement('pagerex-viewer');
viewer.addEventListener('load', ({ detail }) => (document.title = detail.result.summary.title));
document.querySelector('main').append(viewer);
viewer.load('letter.doc');
