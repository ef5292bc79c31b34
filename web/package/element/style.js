// The look of the viewer. A host changes it by custom properties and by ::part names.

export const STYLE = `
:host{display:block;block-size:min(80vh,900px);min-block-size:240px;position:relative}
:host([hidden]),[hidden]{display:none!important}
*,*::before{box-sizing:border-box}
.viewer{
--surface:var(--pagerex-surface,#fff);--ink:var(--pagerex-text,#1c1f24);--soft:var(--pagerex-muted,#59616d);
--line:var(--pagerex-border,#e0e3e8);--hover:var(--pagerex-hover,#eff1f4);--accent:var(--pagerex-accent,#1a5fd0);
--on-accent:var(--pagerex-on-accent,#fff);--tint:var(--pagerex-tint,#e6effc);--backdrop:var(--pagerex-backdrop,#eceef1);
--radius:var(--pagerex-radius,0px);--size:34px;--shadow:0 2px 6px rgb(0 0 0/.08),0 12px 32px rgb(0 0 0/.14);
display:flex;flex-direction:column;block-size:100%;position:relative;color-scheme:light;
border:1px solid var(--line);border-radius:var(--radius);background:var(--surface);color:var(--ink);
font:400 13.5px/1.45 var(--pagerex-font,system-ui,-apple-system,"Segoe UI",Roboto,"Noto Sans",sans-serif);
font-variant-numeric:tabular-nums;-webkit-font-smoothing:antialiased}
.viewer.dark{
--surface:var(--pagerex-surface,#1c1e22);--ink:var(--pagerex-text,#e7e9ed);--soft:var(--pagerex-muted,#a4abb6);
--line:var(--pagerex-border,#31353c);--hover:var(--pagerex-hover,#2a2d33);--accent:var(--pagerex-accent,#86b4ff);
--on-accent:var(--pagerex-on-accent,#0d1a30);--tint:var(--pagerex-tint,#26364f);--backdrop:var(--pagerex-backdrop,#1d1e1f);
--shadow:0 2px 6px rgb(0 0 0/.4),0 12px 32px rgb(0 0 0/.5);color-scheme:dark}
button,input{font:inherit;color:inherit;margin:0}
button{cursor:pointer}
:focus-visible{outline:2px solid var(--accent);outline-offset:-2px}
svg{inline-size:20px;block-size:20px;flex:none;fill:none;stroke:currentColor;stroke-width:1.6;stroke-linecap:round;stroke-linejoin:round}
.bar{display:flex;align-items:center;gap:2px;padding:6px 8px;border-block-end:1px solid var(--line);flex:none;overflow:hidden;white-space:nowrap}
.button{display:inline-flex;align-items:center;justify-content:center;inline-size:var(--size);block-size:var(--size);flex:none;
padding:0;border:0;border-radius:8px;background:none;color:var(--soft);transition:background .12s,color .12s}
.button:hover{background:var(--hover);color:var(--ink)}
.button[aria-pressed=true],.button[aria-expanded=true]{background:var(--tint);color:var(--accent)}
.button[aria-disabled=true]{opacity:.38;cursor:default;background:none}
.words{inline-size:auto;min-inline-size:52px;padding-inline:6px;color:var(--ink)}
.group{margin-inline-start:10px;position:relative}
.space{flex:1 1 0;min-inline-size:8px}
.bar .button[data-id=more] svg{stroke-width:2.6}
.pages{display:inline-flex;align-items:center;gap:7px;padding-inline:4px;flex:none;color:var(--soft)}
.field{block-size:calc(var(--size) - 6px);min-inline-size:36px;padding:0 6px;border:1px solid var(--line);border-radius:7px;background:none;color:var(--ink);text-align:center}
.field:hover{border-color:var(--soft)}.field:focus-visible,.query:focus-visible{outline-offset:-1px}
.field:disabled{opacity:.5}
.progress{position:relative;block-size:2px;margin-block-start:-2px;flex:none;overflow:hidden;z-index:2}
.progress::before{content:"";position:absolute;inset:0;background:var(--accent);transform-origin:0 0;transform:scaleX(var(--done,0));transition:transform .2s}
.progress:dir(rtl)::before{transform-origin:100% 0}
.middle{display:flex;flex:1;min-block-size:0;position:relative}
.panel{inline-size:min(270px,80%);flex:none;display:flex;flex-direction:column;border-inline-end:1px solid var(--line);background:var(--surface);z-index:2}
.head{display:flex;align-items:center;justify-content:space-between;padding:8px 8px 4px 16px;font-weight:600}
.tree{overflow-y:auto;overscroll-behavior:contain;padding:2px 8px 12px;flex:1}
.row{padding:6px 8px;padding-inline-start:calc(8px + (var(--level) - 1)*14px);border-radius:7px;cursor:pointer;overflow:hidden;
text-overflow:ellipsis;white-space:nowrap;color:var(--ink);content-visibility:auto;contain-intrinsic-size:auto 32px;min-block-size:32px}
.row:hover{background:var(--hover)}
.row[aria-current]{background:var(--tint);color:var(--accent);font-weight:500}
.row.title{margin-block-start:8px;font-weight:600;color:var(--soft);cursor:default}
.panel .none{margin:4px 16px;color:var(--soft)}
.stage{flex:1;min-inline-size:0;position:relative;background:var(--backdrop);border-radius:0 0 var(--radius) var(--radius)}
iframe{position:absolute;inset:0;inline-size:100%;block-size:100%;border:0;display:block;color-scheme:light;border-radius:inherit}
iframe.waiting{visibility:hidden}
.dark iframe{filter:invert(.93) hue-rotate(180deg)}
.dragged iframe{pointer-events:none}
.find{position:absolute;inset-block-start:10px;inset-inline-end:18px;z-index:3;display:flex;align-items:center;gap:2px;padding:4px 4px 4px 12px;
inline-size:min(400px,calc(100% - 20px));border:1px solid var(--line);border-radius:12px;background:var(--surface);box-shadow:var(--shadow);color:var(--soft)}
.query{flex:1;min-inline-size:0;block-size:var(--size);border:0;padding:0 8px;background:none;color:var(--ink);border-radius:8px;appearance:none}
.query::-webkit-search-cancel-button{display:none}
.query::placeholder{color:var(--soft);opacity:1}
.count{padding-inline:6px;white-space:nowrap}
.find.none .count{color:var(--pagerex-danger,#b3261e)}
.dark .find.none .count{color:var(--pagerex-danger,#ffb4ab)}
.menu{position:absolute;z-index:5;min-inline-size:200px;max-inline-size:calc(100% - 16px);overflow-y:auto;padding:5px;border:1px solid var(--line);border-radius:11px;background:var(--surface);box-shadow:var(--shadow)}
.item{display:flex;align-items:center;gap:10px;inline-size:100%;min-block-size:36px;padding:4px 14px 4px 9px;border:0;border-radius:7px;background:none;text-align:start;color:var(--ink)}
.item svg{color:var(--soft)}
.item:hover,.item:focus-visible{background:var(--hover)}
.sheet{position:absolute;inset:0;display:flex;align-items:center;justify-content:center;padding:24px;text-align:center;overflow:auto}
.card{max-inline-size:420px;display:flex;flex-direction:column;align-items:center;gap:10px}
.card .sign{display:grid;place-items:center;inline-size:64px;block-size:64px;border-radius:18px;background:var(--surface);color:var(--accent);box-shadow:0 1px 2px rgb(0 0 0/.08),0 6px 18px rgb(0 0 0/.07);margin-block-end:6px}
.card .sign svg{inline-size:30px;block-size:30px;stroke-width:1.3}
.card strong{font-size:17px;font-weight:600;line-height:1.3}
.card p{margin:0;color:var(--soft);text-wrap:balance;overflow-wrap:anywhere}
.action{min-block-size:40px;padding:0 18px;margin-block-start:8px;border:0;border-radius:10px;background:var(--accent);color:var(--on-accent);font-weight:500}
.action:hover{filter:brightness(1.08)}.action:focus-visible{outline-offset:2px}
.status,.notice{position:absolute;inset-block-end:16px;inset-inline:16px;margin-inline:auto;inline-size:fit-content;max-inline-size:calc(100% - 32px);z-index:3;display:flex;align-items:center;gap:6px;
padding:4px 4px 4px 14px;border:1px solid var(--line);border-radius:12px;background:var(--surface);box-shadow:var(--shadow)}
.status span,.notice span{overflow:hidden;text-overflow:ellipsis;min-inline-size:0;padding-block:6px}
.status span{white-space:nowrap}
.status{animation:appear .2s .4s both}
@keyframes appear{from{opacity:0}}
.plain{min-block-size:var(--size);padding:0 10px;border:0;border-radius:8px;background:none;color:var(--accent);font-weight:500;flex:none}
.plain:hover{background:var(--hover)}
.drop{position:absolute;inset:8px;z-index:6;display:grid;place-items:center;border:2px dashed var(--accent);border-radius:12px;background:color-mix(in srgb,var(--surface) 88%,transparent);color:var(--accent);font-size:17px;font-weight:600;pointer-events:none}
.live{position:absolute;inline-size:1px;block-size:1px;overflow:hidden;clip-path:inset(50%);white-space:nowrap}
.narrow .panel{position:absolute;inset-block:0;inset-inline-start:0;box-shadow:var(--shadow)}
.narrow .find{inset-inline:10px;inline-size:auto}
.narrow .bar{padding-inline:4px}.narrow .group{margin-inline-start:2px}
@media (pointer:coarse){.viewer{--size:40px}.row,.item{min-block-size:44px}.row{padding-block:11px}.field,.query{font-size:16px}}
@media (forced-colors:active){.dark iframe{filter:none}.button[aria-pressed=true]{outline:2px solid}}
@media (prefers-reduced-motion:reduce){*,*::before{transition:none!important;animation-duration:0s!important}}
`;

let sheet;

/** Gives a shadow its style: as a sheet that all viewers share, and that any policy of the host's page lets pass. */
export function dress(shadow) {
  try {
    if (!sheet) {
      sheet = new CSSStyleSheet();
      sheet.replaceSync(STYLE);
    }
    shadow.adoptedStyleSheets = [sheet];
  } catch {
    const style = document.createElement('style');
    style.textContent = STYLE;
    shadow.append(style);
  }
}
