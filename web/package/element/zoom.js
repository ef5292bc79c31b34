// How large a document is shown: by a factor, or as wide as the window.

const STEPS = [0.25, 0.33, 0.5, 0.67, 0.75, 0.8, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3, 4, 5];

export class Zoom {
  factor = 1;
  isFit = false;
  isThere = globalThis.CSS?.supports('zoom', '2') ?? false;

  constructor(frame, onChange) {
    Object.assign(this, { frame, onChange });
  }

  /** A factor, or 'fit'. */
  set(value) {
    this.isFit = value === 'fit';
    if (!this.isFit) this.factor = Math.min(Math.max(Number(value) || 1, STEPS[0]), STEPS[STEPS.length - 1]);
    this.apply();
    this.onChange();
  }

  step(direction) {
    const next = direction > 0 ? STEPS.find((each) => each > this.factor + 0.005)
      : STEPS.findLast((each) => each < this.factor - 0.005);
    if (next) this.set(next);
  }

  resized() {
    if (this.isFit) this.set('fit');
  }

  apply() {
    const frame = this.frame();
    if (!frame) return;
    if (this.isFit) this.factor = Math.min(Math.max(frame.fitting, STEPS[0]), 3);
    frame.zoom = this.factor;
  }
}
