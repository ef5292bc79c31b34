// Small helpers for elements and their labels.

/** h('button', { class: 'x', 'aria-label': 'y', onclick: f }, ...children): true stands for an empty attribute. */
export function h(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (typeof value === 'function') element.addEventListener(key.slice(2), value);
    else if (value !== undefined && value !== false) element.setAttribute(key, value === true ? '' : value);
  }
  element.append(...children.filter((child) => child !== undefined));
  return element;
}

/** Which text stands where: what a change of language says anew. */
export class Labels {
  #bound = [];

  constructor(say) {
    this.say = say;
  }

  percent(part) {
    return this.say.percent(part);
  }

  /** `place`: "text", or the attributes that have the text. Returns the element. */
  bind(element, key, ...places) {
    const row = [element, key, places.length > 0 ? places : ['text']];
    this.#bound.push(row);
    this.#write(row);
    return element;
  }

  refresh(say) {
    this.say = say;
    for (const row of this.#bound) this.#write(row);
  }

  #write([element, key, places]) {
    const text = this.say(key, element.pagerexValues);
    for (const place of places) {
      if (place === 'text') element.textContent = text;
      else element.setAttribute(place, text);
    }
  }
}

/** A key that moves among `items`, in a row or a column: the item that it leads to. */
export function moveAmong(items, current, key, isColumn) {
  const steps = isColumn ? { ArrowDown: 1, ArrowUp: -1 } : { ArrowRight: 1, ArrowLeft: -1 };
  const index = items.indexOf(current);
  if (key === 'Home') return items[0];
  if (key === 'End') return items[items.length - 1];
  return key in steps ? items[(index + steps[key] + items.length) % items.length] : undefined;
}

const channel = () => new Promise((resolve) => {
  const { port1, port2 } = new MessageChannel();
  port1.onmessage = () => {
    port1.close();
    resolve();
  };
  port2.postMessage(0);
});

const LONGEST_SLICE = 100;

/**
 * For long work in a loop: lets the page breathe, where a slice of time has gone by; else there is nothing to wait
 * for. Where drawing takes the browser long, slices become longer too: half of the time is for the work.
 */
export function slices(milliseconds = 10) {
  let begin = performance.now();
  let slice = milliseconds;
  return () => {
    const end = performance.now();
    if (end - begin < slice) return undefined;
    return channel().then(() => {
      begin = performance.now();
      slice = Math.min(Math.max(begin - end, milliseconds), LONGEST_SLICE);
    });
  };
}

/** When the browser has drawn what there is; soon, where it does not draw. */
export function drawn() {
  return new Promise((resolve) => {
    const timer = setTimeout(resolve, 60);
    requestAnimationFrame(() => {
      clearTimeout(timer);
      channel().then(resolve);
    });
  });
}
