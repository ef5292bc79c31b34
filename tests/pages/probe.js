// Questions about a page, by the text that stands in it: engines.py puts these in front of each expression.

// The text of the body with where each text node begins in it.
function bodyText() {
  const nodes = [], starts = [];
  let all = '';
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  while (walker.nextNode()) {
    nodes.push(walker.currentNode);
    starts.push(all.length);
    all += walker.currentNode.data;
  }
  return { all, nodes, starts };
}

function pointAt({ nodes, starts }, offset) {
  let at = starts.length - 1;
  while (starts[at] > offset) --at;
  return [nodes[at], offset - starts[at]];
}

// The place of a text, which may lie in several elements; null where it does not stand. `nth` counts from 0.
function range(text, nth = 0) {
  const body = bodyText();
  let at = -1;
  for (let i = 0; i <= nth; ++i) at = body.all.indexOf(text, at + 1);
  if (at < 0) return null;
  const found = document.createRange();
  found.setStart(...pointAt(body, at));
  const [last, offset] = pointAt(body, at + text.length - 1);
  found.setEnd(last, offset + 1);
  return found;
}

// The innermost element at the beginning of a text.
const at = (text, nth) => range(text, nth)?.startContainer.parentElement ?? null;

const BLOCKS = /^(block|flow-root|list-item|table-cell|table-caption|grid|flex)$/;
const isBlock = element => BLOCKS.test(getComputedStyle(element).display);

// The paragraph that a text stands in.
function block(text, nth) {
  let element = at(text, nth);
  while (element && !isBlock(element)) element = element.parentElement;
  return element;
}

const within = (text, selector) => at(text)?.closest(selector) ?? null;

const style = (text, name) => getComputedStyle(at(text)).getPropertyValue(name);
const blockStyle = (text, name) => getComputedStyle(block(text)).getPropertyValue(name);

// Up from a text to the end of its paragraph.
function inlineElements(text) {
  const found = [];
  for (let element = at(text); element && !isBlock(element); element = element.parentElement) found.push(element);
  return found;
}

const pixels = rectangle => rectangle && ({
  left: rectangle.left + scrollX, top: rectangle.top + scrollY, right: rectangle.right + scrollX,
  bottom: rectangle.bottom + scrollY, width: rectangle.width, height: rectangle.height });

const box = (text, nth) => pixels(range(text, nth)?.getBoundingClientRect());
const boxOf = element => pixels(element?.getBoundingClientRect());
const blockBox = text => boxOf(block(text));

// The tops of the lines that a text runs over.
function lineTops(text) {
  const tops = [...range(text).getClientRects()].filter(each => each.width > 0).map(each => each.top);
  return tops.filter((top, i) => tops.findIndex(other => Math.abs(other - top) < 3) === i);
}

// The area of the text, without its margins.
function textArea(element = document.querySelector('main')) {
  const { left, right, top, bottom } = boxOf(element), look = getComputedStyle(element);
  const inner = side => parseFloat(look.getPropertyValue(`padding-${side}`)) +
    parseFloat(look.getPropertyValue(`border-${side}-width`));
  return { left: left + inner('left'), right: right - inner('right'), top: top + inner('top'),
    bottom: bottom - inner('bottom'), width: right - left - inner('left') - inner('right') };
}

// The colour under a text: the first that is not transparent, else white, as paper is.
function ground(text) {
  for (let element = at(text); element; element = element.parentElement) {
    const colour = getComputedStyle(element).backgroundColor;
    if (!/^(transparent|rgba\(.*, 0\))$/.test(colour)) return colour;
  }
  return 'rgb(255, 255, 255)';
}

// The lines through and under a text, of all elements around it.
function decorations(text) {
  return inlineElements(text).map(element => getComputedStyle(element))
    .filter(look => look.textDecorationLine !== 'none')
    .map(look => ({ line: look.textDecorationLine, style: look.textDecorationStyle,
      colour: look.textDecorationColor, thickness: look.textDecorationThickness }));
}

const families = text => style(text, 'font-family').split(',').map(name => name.trim().replace(/^["']|["']$/g, ''));

const texts = selector => [...document.querySelectorAll(selector)].map(element => element.textContent.trim());

// What a reader gets who copies a part of the page from one text to another.
function copied(from, to) {
  const selection = getSelection(), last = range(to);
  selection.removeAllRanges();
  const all = range(from);
  all.setEnd(last.endContainer, last.endOffset);
  selection.addRange(all);
  const text = selection.toString();
  selection.removeAllRanges();
  return text;
}

// The element that a link leads to: its `href` is a place in the page.
const landing = link => document.getElementById(decodeURIComponent(link.getAttribute('href').slice(1)));
