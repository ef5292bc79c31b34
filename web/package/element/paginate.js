// Divides a document that is still being written into pages: elements of about a sheet's height around its blocks,
// which browsers lay out only where they are seen.

const GUESSED = 0.2; // pixels of height for each character of a text, until some have been measured
const GAP = 60; // characters whose room the distance to the next block takes
const MEASURED = 24; // pages, after which the height of plain text is reckoned from that of the text before

const USUAL_SHEET = { width: 415, height: 698 };
const PIXELS_PER_POINT = 96 / 72;

/** Blocks whose height does not come from their text. */
const UNEVEN = 'table,img,svg';

/** Blocks whose pieces hang out of them: what follows stands beside them or under them. */
const HANGING = '.a,.fl,.text-box';

/** What its margins leave of a sheet, in points, as a document's first `@page` rule tells. */
export function sheetOf(css) {
  const rule = /@page ?\{size:([\d.]+)pt ([\d.]+)pt;margin:([^;}]*)/.exec(css);
  if (!rule) return USUAL_SHEET;
  const margins = rule[3].split(' ').map(Number.parseFloat);
  const [top, right = top, bottom = top, left = right] = margins;
  const width = rule[1] - left - right;
  const height = rule[2] - top - bottom;
  return width > 72 && height > 72 ? { width, height } : USUAL_SHEET;
}

const hangs = (block) => block.matches(HANGING) || block.querySelector(HANGING) !== null;

export class Paginator {
  /** With what each begins, in the order of the document. */
  pages = [];
  measured = 0;
  rooms = 0;
  filled = 0; // of the page that is being made; a section may end in the midst of it

  constructor(main, sheet) {
    const style = main.ownerDocument.defaultView.getComputedStyle(main);
    const [width, start, end] = [style.width, style.paddingLeft, style.paddingRight].map(Number.parseFloat);
    this.main = main;
    // Engines differ in whether a rectangle is told with its zoom or without.
    this.scale = main.getBoundingClientRect().width / (width + start + end) || 1;
    // As many square pixels as the sheet has: lines of a narrow window are short, and many.
    this.most = (sheet.height * sheet.width * PIXELS_PER_POINT ** 2) / (width || sheet.width * PIXELS_PER_POINT);
  }

  #heightOf(block) {
    if (block.tagName === 'STYLE') return 0;
    const room = block.textContent.length + GAP;
    const isEven = !block.matches(UNEVEN) && block.querySelector(UNEVEN) === null;
    if (isEven && this.pages.length >= MEASURED) return room * (this.measured / this.rooms || GUESSED);
    const height = block.getBoundingClientRect().height / this.scale;
    if (isEven) {
      this.measured += height;
      this.rooms += room;
    }
    // Nothing is laid out where the viewer is hidden.
    return height || room * GUESSED;
  }

  /** Takes in what has been written since; the last block of all may still grow. A table that `isCut` will: it gets
   * its page at once, while it is small, for what is moved is laid out anew. */
  absorb(isWhole, isCut = false) {
    this.#divide(this.main, isWhole, isCut);
  }

  #divide(container, isWhole, isCut) {
    let [run, height] = [[], 0];
    const finish = (endsPage) => {
      if (run.length > 0) this.#wrap(container, run, height);
      if (endsPage) this.filled = 0;
      [run, height] = [[], 0];
    };
    let next;
    for (let block = this.#firstOf(container); block; block = next) {
      next = block.nextElementSibling;
      const isClosed = isWhole || next !== null;
      if (this.#isContainer(block)) {
        finish(false);
        if (!block.pagerexDone) this.#divide(block, isClosed, isCut);
        block.pagerexDone = isClosed;
      } else if (!isClosed && isCut) {
        finish(true);
        this.#wrap(container, [block], 2 * this.most);
      } else if (isClosed) {
        const own = this.#heightOf(block);
        const before = this.filled + height;
        if (block.matches('hr.pb') || (before > 0 && before + own > this.most * 1.15)) finish(true);
        run.push(block);
        height += own;
        if (block.querySelector('.pb') || this.#isFull(this.filled + height, block)) finish(true);
      }
    }
    if (isWhole) finish(false);
  }

  /** Of what no page has yet. */
  #firstOf(container) {
    return container.pagerexLast ? container.pagerexLast.nextElementSibling : container.firstElementChild;
  }

  #isFull(height, block) {
    return height >= this.most && (height >= 2 * this.most || !hangs(block));
  }

  /** Sections, whose blocks are on pages of their own. Columns are not divided. */
  #isContainer(block) {
    if (!/^(DIV|SECTION)$/.test(block.tagName) || !/^(P|H\d|TABLE|[UO]L|HR|DIV|STYLE)$/.test(block.firstElementChild?.tagName)) {
      return false;
    }
    if (block.pagerexFlows === undefined) {
      const style = block.ownerDocument.defaultView.getComputedStyle(block);
      block.pagerexFlows = style.display === 'block' && style.position === 'static' && style.float === 'none'
        && style.columnCount === 'auto' && style.columnWidth === 'auto' && !block.matches('.x,.text-box,.comments');
    }
    return block.pagerexFlows;
  }

  #wrap(container, run, height) {
    const page = container.ownerDocument.createElement('div');
    page.className = 'pagerex-page';
    page.style.containIntrinsicSize = `auto ${Math.round(height)}px`;
    container.insertBefore(page, run[0]);
    const last = run[run.length - 1];
    while (page.lastChild !== last) page.append(page.nextSibling);
    container.pagerexLast = page;
    if (this.filled === 0) this.pages.push(page);
    this.filled += height || 1;
  }
}
