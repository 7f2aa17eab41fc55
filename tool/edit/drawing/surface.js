/** The picture with everything that stands on it, and how it is zoomed. */

import { SVG } from "@svgdotjs/svg.js";
import "@svgdotjs/svg.panzoom.js";

const MOST_ZOOM = 32;
const LEAST_ZOOM = 0.05;
const STEP = 1.25;
const MARGIN = 0.04;
/** A callout's height in a picture that is 1440 pixels wide, and from how many pixels of the screen
 *  on there is room for the handles around it. */
const CALLOUT_HEIGHT = 22;
const USUAL_WIDTH = 1440;
const LEAST_HEIGHT = 16;

export class Surface {
  #picture;
  #size = [1, 1];

  /** @param {HTMLElement} parent */
  constructor(parent) {
    this.svg = SVG().addTo(parent);
    this.svg.attr({ tabindex: 0, role: "application", "aria-roledescription": "drawing" });
    this.svg.attr("aria-label", "Picture of the board");
    this.svg.panZoom({ zoomMin: LEAST_ZOOM, zoomMax: MOST_ZOOM, zoomFactor: 0.1 });
    this.#picture = this.svg.image();
    this.components = this.svg.group().addClass("components");
    this.handles = this.svg.group().addClass("handles");
    this.draft = this.svg.group().addClass("draft");
    this.svg.on("zoom.surface", () => requestAnimationFrame(() => this.measure()));
    new ResizeObserver(() => this.measure()).observe(this.svg.node);
  }

  /** Shows a picture of that size, all of it. */
  show(address, size) {
    this.#size = size;
    this.#picture.attr({ href: address, width: size[0], height: size[1] });
    this.fit();
  }

  get size() {
    return this.#size;
  }

  /** Zooms so that the whole picture is seen. */
  fit() {
    const [width, height] = this.#size;
    const [x, y] = [width * MARGIN, height * MARGIN];
    this.svg.viewbox(-x, -y, width + 2 * x, height + 2 * y);
    this.measure();
  }

  /** Zooms in or out; the point stays where it is, or the middle. */
  zoomBy(steps, point) {
    const zoom = this.svg.zoom() * STEP ** steps;
    const focus = point && { x: point[0], y: point[1] };
    this.svg.zoom(Math.min(Math.max(zoom, LEAST_ZOOM), MOST_ZOOM), focus);
    this.measure();
  }

  /** How many pixels of the picture one of the screen is; handles keep their size by it. */
  get pixel() {
    const matrix = this.svg.node.getScreenCTM();
    return matrix && matrix.a > 0 ? 1 / matrix.a : 1;
  }

  measure() {
    const { pixel } = this;
    this.svg.node.style.setProperty("--pixel", pixel);
    const callout = (CALLOUT_HEIGHT * this.#size[0]) / USUAL_WIDTH;
    this.svg.node.classList.toggle("far", callout / pixel < LEAST_HEIGHT);
  }

  /** Where the pointer is on the picture, between its pixels. */
  at(event) {
    const { x, y } = this.svg.point(event.clientX, event.clientY);
    return [x, y];
  }

  /** Brings a point into sight, as when it is moved by keys. */
  reveal([x, y]) {
    const box = this.svg.viewbox();
    const margin = Math.min(box.width, box.height) * MARGIN;
    const shift = (value, low, length) =>
      Math.min(value - margin - low, 0) || Math.max(value + margin - low - length, 0);
    const [dx, dy] = [shift(x, box.x, box.width), shift(y, box.y, box.height)];
    if (dx || dy) this.svg.viewbox(box.x + dx, box.y + dy, box.width, box.height);
  }
}
