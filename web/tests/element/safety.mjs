// Nothing of a document runs, is sent, or leaves its frame, whatever stands in its pages.

import assert from 'node:assert/strict';

const trap = (name) => `${'/trap'}/${name}`;

/** What a page would do if it could: each part tries to reach the trap, or to leave a trace in the host. */
const HOSTILE = [
  '<base href="/trap/base/" target=_top>',
  `<meta http-equiv=refresh content="0;url=${trap('refresh')}">`,
  '<script>parent.evil = "script"</script>',
  `<script src="${trap('script.js')}"></script>`,
  '<img src=x onerror="parent.evil=1">',
  `<img src="${trap('image.png')}" srcset="${trap('large.png')} 2x">`,
  '<svg onload="parent.evil=2"><script>parent.evil=3</script><animate onbegin="parent.evil=4"/></svg>',
  `<svg><image href="${trap('svg.png')}"/><use href="${trap('use.svg')}#a"/></svg>`,
  `<object data="${trap('object')}"></object><embed src="${trap('embed')}">`,
  `<iframe src="${trap('frame')}"></iframe><iframe srcdoc="<script>top.evil=5</script>"></iframe>`,
  `<link rel=stylesheet href="${trap('sheet.css')}"><link rel=prefetch href="${trap('prefetch')}">`,
  `<style>@import "${trap('import.css')}";p{background:url(${trap('css.png')})}@font-face{font-family:f;src:url(${trap('font')})}p{font-family:f}</style>`,
  `<p style="background:url(${trap('inline.png')})">text</p>`,
  `<video src="${trap('video')}" poster="${trap('poster.png')}"></video><audio src="${trap('audio')}" autoplay></audio>`,
  `<form id=form action="${trap('form')}"><input name=a><button id=submit>send</button></form>`,
  '<a id=script href="javascript:parent.evil=6">script</a>',
  '<a id=vb href="  VBScript:x">other</a>',
  '<a id=data href="data:text/html,<script>opener.evil=7</script>">data</a>',
  `<a id=ping href="#x" ping="${trap('ping')}">ping</a>`,
  `<a id=top href="${trap('top')}" target=_top>top</a>`,
  '<details ontoggle="parent.evil=8" open><summary>s</summary></details>',
  '<input autofocus onfocus="parent.evil=9">',
].join('');

export function define(test, context) {
  const ask = (...question) => context.engine.ask(...question);

  test('what a hostile page tries comes to nothing', async () => {
    await context.open();
    context.server.requests.length = 0;
    const seen = await ask(async (hostile) => {
      const { show, until, HEAD } = window.probe;
      const before = location.href;
      await show(`<p>First</p>${hostile}<p id=x>Last</p>`, '<p>More</p>');
      const { inner } = window.probe;
      inner.getElementById('submit').click();
      for (const id of ['script', 'data', 'vb', 'ping']) inner.getElementById(id).click();
      // What a page asks for is on its way when another load of the same frame's has ended.
      const image = inner.createElement('img');
      image.src = 'data:image/gif;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA=';
      inner.body.append(image);
      await until(() => image.complete && image.naturalWidth === 1, 'a picture of its own');
      await fetch('/pages/viewer.css');
      return { evil: window.evil, top: location.href === before, last: inner.getElementById('x').textContent,
        base: inner.baseURI.replace(/#.*/, '') === before, head: HEAD.length > 0, kept: window.probe.inner === inner,
        links: ['script', 'data', 'vb', 'top'].map((id) => inner.getElementById(id).getAttribute('href')),
        target: inner.getElementById('ping').target };
    }, HOSTILE);
    assert.equal(seen.evil ?? undefined, undefined);
    assert.deepEqual([seen.top, seen.base, seen.kept], [true, true, true]);
    assert.equal(seen.last, 'Last');
    assert.deepEqual(seen.links.map((each) => each ?? null), [null, null, null, null]);
    assert.deepEqual(context.server.requests.filter((path) => path.startsWith('/trap')), []);
  });

  test('what a hostile document tries is text', async () => {
    await context.open({ src: '/documents/hostile.doc' });
    const seen = await ask(async () => {
      await window.probe.ready();
      const { viewer, inner } = window.probe;
      const found = [await viewer.search('<img onerror=evil=1>'), await viewer.search('an example')];
      return { found, images: inner.querySelectorAll('[onerror]').length, links: inner.querySelectorAll('a[href^=j i]').length,
        evil: [window.e, window.evil].filter(Boolean) };
    });
    assert.deepEqual(seen, { found: [1, seen.found[1]], images: 0, links: 0, evil: [] });
    assert.ok(seen.found[1] > 0);
  });

  test('a link to outside opens a window of its own, and leaves this one', async () => {
    await context.open();
    const before = await context.engine.windows();
    await ask(() => window.probe.show(`<p><a href="${location.origin}/pages/other.html">outside</a></p><p>x</p>`));
    context.server.requests.length = 0;
    await context.engine.click(...await ask(() => window.probe.place(window.probe.inner.querySelector('a'))));
    await ask(() => window.probe.until(async () => (await fetch('/asked/other.html')).ok));
    assert.ok(await ask(() => window.probe.inner.querySelector('a') !== null && location.pathname.endsWith('viewer.html')));
    await context.engine.closeOthers();
    assert.equal(await context.engine.windows(), before);
  });

  test('the frame has no rights but to be seen, printed and to open links', async () => {
    await context.openSample();
    const seen = await ask(() => {
      const { frame, inner } = window.probe;
      return { sandbox: [...frame.sandbox].sort(), policy: inner.querySelector('meta[http-equiv=Content-Security-Policy]').content };
    });
    assert.deepEqual(seen.sandbox,
      ['allow-modals', 'allow-popups', 'allow-popups-to-escape-sandbox', 'allow-same-origin']);
    assert.match(seen.policy, /^default-src 'none';style-src 'unsafe-inline';img-src data: blob:/);
  });

  test('a page that allows hardly anything can have a viewer, which looks the same', async () => {
    await context.open({ src: '/samples/sample.doc' }, 'strict.html');
    const seen = await ask(async () => {
      const { ready, viewer, shadow } = window.probe;
      viewer.converter = undefined;
      await ready();
      const { inner } = window.probe;
      const styleOf = (element) => (inner ? inner.defaultView : window).getComputedStyle(element);
      return { state: viewer.state, told: window.probe.text('[part=error-sentence]'),
        bar: window.getComputedStyle(shadow.querySelector('.bar')).display,
        heading: inner && styleOf(inner.querySelector('h1')).color, sheet: inner && styleOf(inner.querySelector('main')).backgroundColor };
    });
    assert.deepEqual(seen, { state: 'ready', told: '', bar: 'flex', heading: 'rgb(31, 78, 121)', sheet: 'rgb(255, 255, 255)' });
  });
}
