import assert from "node:assert/strict";
import {test} from "node:test";

import {countPoints} from "../../../../instrument/report/dots.mjs";
import {Sheet, decodeBits} from "../../../../instrument/report/sheet.mjs";

const NO_ERRORS = {advance: 0, tilt: 0, bidirectional: 0, dead: -1};

/** Two passes over 8 lines of 8 columns: even columns in pass 0, odd ones in pass 1; row y + 2 prints line y. */
function smallData() {
  const lines = 12;
  const columns = 12; // two of margin at either side, and two lines above and below
  const prints = [];
  const fired = [];
  for (let pass = 0; pass < 2; ++pass) {
    for (let line = -2; line < 10; ++line) {
      prints.push([pass, line + 2, line]);
      for (let column = 0; column < columns; ++column)
        fired.push(column % 2 === pass ? 1 : 0);
    }
  }
  const pack = (bits) => {
    const bytes = new Uint8Array(Math.ceil(bits.length / 8));
    bits.forEach((bit, index) => {
      bytes[index >> 3] |= bit << (7 - index % 8);
    });
    return btoa(String.fromCharCode(...bytes));
  };
  return {
    window: {lineCount: 8, columnCount: 8, dotDiameter: 0.5, supersample: 4, paperReflectance: 0.8,
      inkReflectance: 0.1, xResPass: 1, yResPass: 1, rowCount: 12},
    marginLines: 2,
    marginColumns: 2,
    passes: [[0, 0, 0], [1, 1, 0]],
    prints,
    fired: pack(fired),
    wanted: [{tint: 1, bits: pack(new Array(lines * columns).fill(1))}],
  };
}

/** Inked points of the window by columns of pixels. */
function inkOfColumns(sheet) {
  const ink = new Array(8).fill(0);
  sheet.cells.forEach((bits, index) => {
    ink[(index % sheet.width) >> 2] += countPoints(bits);
  });
  return ink;
}

const DOT = Math.round(Math.PI / 4 * 0.5 * 0.5 * 256); // points of a dot that fits its pixel

test("bits come from the top of each byte", () => {
  const bit = decodeBits(btoa("\x80\x01"));
  assert.deepEqual([0, 1, 7, 8, 15].map(bit), [1, 0, 0, 0, 1]);
});

test("a sheet without errors has every dot in its pixel", () => {
  const sheet = new Sheet(smallData());
  sheet.print(NO_ERRORS, 0);
  assert.deepEqual(inkOfColumns(sheet), new Array(8).fill(8 * DOT));
  const share = DOT / 256;
  for (const reflectance of sheet.lineReflectances())
    assert.ok(Math.abs(reflectance - (0.8 - 0.7 * share)) < 1e-12);
});

test("a dead row prints nothing", () => {
  const sheet = new Sheet(smallData());
  sheet.print({...NO_ERRORS, dead: 5}, 0); // row 5 prints line 3, in both passes
  assert.deepEqual(sheet.lineReflectances().map((one) => one === 0.8), [0, 0, 0, 1, 0, 0, 0, 0].map(Boolean));
});

test("a bidirectional offset of one pitch lays the odd pass on the even one", () => {
  const sheet = new Sheet(smallData());
  sheet.print({...NO_ERRORS, bidirectional: 1}, 0);
  assert.deepEqual(inkOfColumns(sheet), [1, 0, 1, 0, 1, 0, 1, 0].map((one) => one * 8 * DOT));
});

test("an advance error moves pass 1 and not pass 0", () => {
  const sheet = new Sheet(smallData());
  sheet.print({...NO_ERRORS, advance: 0.5}, 0);
  const inkAt = (column, cellRow) => {
    let ink = 0;
    for (let x = 4 * column; x < 4 * column + 4; ++x)
      ink += countPoints(sheet.cells[cellRow * sheet.width + x]);
    return ink;
  };
  assert.equal(inkAt(0, 0), 0); // between two dots of pass 0, which are two cells high
  assert.ok(inkAt(0, 1) > 0);
  assert.ok(inkAt(1, 0) > 0); // half a pitch lower: the dot of the line above
  assert.equal(inkAt(1, 1), 0);
});

test("shifts of the advance grow from pass 0 in both directions", () => {
  assert.deepEqual([-2, 0, 3].map((number) => Sheet.shiftOfPass(number, 0.25)), [-0.5, 0, 0.75]);
});

test("a tilted head turns about its middle", () => {
  const sheet = new Sheet(smallData());
  sheet.print({...NO_ERRORS, tilt: 0.25}, 0);
  const middles = [0, 7].map((line) => { // rows 2 and 9 of 12: 3.5 rows from the middle
    let sum = 0;
    let ink = 0;
    for (let cell = 4 * line * sheet.width; cell < 4 * (line + 1) * sheet.width; ++cell) {
      const points = countPoints(sheet.cells[cell]);
      const column = cell % sheet.width;
      if (column >= 8 && column < 24) { // away from the sides, four pixels
        sum += points * ((column + 0.5) % 4);
        ink += points;
      }
    }
    return sum / ink;
  });
  // Dots are moved by 0.875 pitches, to the left and to the right: modulo a pixel of four cells.
  assert.ok(Math.abs(middles[0] - (2 - 3.5 + 4)) < 0.26);
  assert.ok(Math.abs(middles[1] - (2 + 3.5 - 4)) < 0.26);
});
