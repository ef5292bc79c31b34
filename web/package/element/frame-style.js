// The look of a document in its frame. Documents style themselves in cascade layers, so that these rules win.

export const FRAME_STYLE = `
@media screen{
html{background:#eceef1;scroll-padding:24px}
body{padding:24px 0;box-sizing:border-box;min-height:100vh}
main{background:#fff;box-shadow:0 1px 3px rgb(0 0 0/.12),0 8px 28px rgb(0 0 0/.08);border-radius:2px;outline:0}
.pagerex-large .pagerex-page{content-visibility:auto}
.pagerex-page{margin-inline:var(--pagerex-out);padding-inline:var(--pagerex-in)}
hr.pb{border:0;height:20px;margin-inline:var(--pagerex-out);background:#eceef1;
box-shadow:inset 0 4px 6px -5px rgb(0 0 0/.22),inset 0 -4px 6px -5px rgb(0 0 0/.14);
margin-block:var(--pagerex-block,48px)}
a[href]:focus-visible{outline:2px solid #1a5fd0;outline-offset:2px;border-radius:2px}
html.pagerex-dark{background:#f3f4f6}
html.pagerex-dark img,html.pagerex-dark svg image{filter:invert(1) hue-rotate(180deg)}
::highlight(pagerex-match){background:#ffe27a;color:#000}
::highlight(pagerex-current){background:#ff9f1c;color:#000}
.pagerex-dark ::highlight(pagerex-match){background:#6b4a00;color:#fff}
.pagerex-dark ::highlight(pagerex-current){background:#a04000;color:#fff}
.pagerex-dark hr.pb{background:#f3f4f6}
mark[data-pagerex]{background:#ffe27a;color:#000}
mark[data-pagerex=current]{background:#ff9f1c}
}
@media screen and (max-width:640px){
html{background:#fff;scroll-padding:8px}
body{padding:0}
main{box-shadow:none;border-radius:0}
hr.pb{height:1px;margin-block:20px;background:#d4d8de;box-shadow:none}
}
.pagerex-no-comments .comments,.pagerex-no-comments .cr{display:none}
@media print{html{zoom:1!important;background:#fff}main{box-shadow:none}.pagerex-page{content-visibility:visible}}
@media (prefers-reduced-motion:no-preference){html.pagerex-smooth{scroll-behavior:smooth}}
`;

/** What a document may do in its frame: be seen. The first base counts, whatever a document brings. */
export const FRAME_HEAD = [
  '<!doctype html><html><head><meta charset=utf-8>',
  '<meta http-equiv=Content-Security-Policy content="default-src \'none\';style-src \'unsafe-inline\';',
  'img-src data: blob:;font-src data:;base-uri \'none\';form-action \'none\'">',
  '<meta http-equiv=x-dns-prefetch-control content=off><meta name=referrer content=no-referrer>',
  '<meta name=viewport content="width=device-width,initial-scale=1"><base target=_blank>',
].join('');
