// Prints a window of the sheet with the errors of a press, from the map of which pass and nozzle row prints
// which pixel. The model is that of instrument/sheet/printedpatch.h with the union of dots; its errors are those
// of instrument/sheet/sheeterrors.h.

import {CELL_EIGHTHS, countPoints, dotReach, makeStamp, roundAway} from "./dots.mjs";

/** Bits of a base64 text, the first one in the most significant bit of its byte. */
export function decodeBits(text) {
  const bytes = Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
  return (index) => (bytes[index >> 3] >> (7 - (index & 7))) & 1;
}

export class Sheet {
  /** @param data  "sketch" of the report's data: instrument/report/sketchsection.h */
  constructor(data) {
    const {window} = data;
    this.window = window;
    this.marginLines = data.marginLines;
    this.marginColumns = data.marginColumns;
    this.mapWidth = window.columnCount + 2 * data.marginColumns;
    this.passes = data.passes.map(([number, position, xPass]) => ({number, position, xPass}));
    this.prints = data.prints.map(([pass, row, line]) => ({pass, row, line}));
    this.fired = decodeBits(data.fired);
    this.wanted = data.wanted.map((one) => decodeBits(one.bits));
    this.shape = {
      diameter: window.dotDiameter,
      cellsX: window.supersample * window.xResPass,
      cellsY: window.supersample * window.yResPass,
    };
    this.width = window.columnCount * window.supersample;
    this.height = window.lineCount * window.supersample;
    this.cells = new Uint16Array(this.width * this.height);
    this.stamps = new Map();
  }

  /** Dots of one place in a cell are all the same. */
  stamp(phaseX, phaseY) {
    const key = phaseY * CELL_EIGHTHS + phaseX;
    if (!this.stamps.has(key))
      this.stamps.set(key, makeStamp(this.shape, phaseX, phaseY));
    return this.stamps.get(key);
  }

  /** How far the errors up to a pass have taken it down the paper, in row pitches. Pass 0 is in its place. */
  static shiftOfPass(number, advance) {
    let shift = 0;
    for (let move = 0; move < Math.abs(number); ++move)
      shift += number > 0 ? advance : -advance;
    return shift;
  }

  /** Columns of the map that a row print fires. */
  firedColumns(print, index, tint) {
    const columns = [];
    const wantedLine = print.line + this.marginLines;
    for (let i = 0; i < this.mapWidth; ++i) {
      if (this.fired(index * this.mapWidth + i) && this.wanted[tint](wantedLine * this.mapWidth + i))
        columns.push(i - this.marginColumns);
    }
    return columns;
  }

  /**
   * Prints the window.
   * @param errors  {advance, tilt, bidirectional: row pitches; dead: nozzle row, -1 for none}
   * @param tint    index of the tint
   * @return        the inked sample points, a number of 16 bits for each cell, row by row
   */
  print(errors, tint) {
    this.cells.fill(0);
    const {supersample} = this.window;
    const middle = (this.window.rowCount - 1) / 2;
    const shifts = this.passes.map((pass) => Sheet.shiftOfPass(pass.number, errors.advance));
    const reachY = dotReach(this.shape.diameter, this.shape.cellsY) * CELL_EIGHTHS;
    this.prints.forEach((print, index) => {
      if (print.row === errors.dead)
        return;
      const isOdd = this.passes[print.pass].number % 2 !== 0;
      const shiftX = errors.tilt * (print.row - middle) + (isOdd ? errors.bidirectional : 0);
      const eighthsX = roundAway(shiftX * this.shape.cellsX * CELL_EIGHTHS);
      const eighthsY = roundAway(((print.line + 0.5) * supersample + shifts[print.pass] * this.shape.cellsY) *
                                 CELL_EIGHTHS);
      if (eighthsY + reachY < 0 || eighthsY - reachY > this.height * CELL_EIGHTHS)
        return;
      for (const column of this.firedColumns(print, index, tint))
        this.addDot((column * CELL_EIGHTHS + CELL_EIGHTHS / 2) * supersample + eighthsX, eighthsY);
    });
    return this.cells;
  }

  /** Inks a dot. @param eighthsX, eighthsY  its centre */
  addDot(eighthsX, eighthsY) {
    const centreX = Math.floor(eighthsX / CELL_EIGHTHS);
    const centreY = Math.floor(eighthsY / CELL_EIGHTHS);
    for (const cell of this.stamp(eighthsX - centreX * CELL_EIGHTHS, eighthsY - centreY * CELL_EIGHTHS)) {
      const x = centreX + cell.x;
      const y = centreY + cell.y;
      if (x >= 0 && x < this.width && y >= 0 && y < this.height)
        this.cells[y * this.width + x] |= cell.bits;
    }
  }

  /** Reflectance of an area of which so many sample points of so many have ink. */
  reflectance(inked, points) {
    const {paperReflectance, inkReflectance} = this.window;
    return paperReflectance + (inkReflectance - paperReflectance) * inked / points;
  }

  /** Mean reflectance of each line of the window. */
  lineReflectances() {
    const {supersample, lineCount} = this.window;
    const perLine = this.width * supersample;
    return Array.from({length: lineCount}, (_, line) => {
      let inked = 0;
      for (let i = line * perLine; i < (line + 1) * perLine; ++i)
        inked += countPoints(this.cells[i]);
      return this.reflectance(inked, perLine * 16);
    });
  }
}
