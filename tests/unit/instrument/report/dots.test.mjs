import assert from "node:assert/strict";
import {test} from "node:test";

import {countPoints, dotPoints, makeStamp, roundAway} from "../../../../instrument/report/dots.mjs";

const SHAPE = {diameter: 1.5, cellsX: 4, cellsY: 4};

test("halves round away from zero", () => {
  assert.deepEqual([0.5, 1.4, -0.5, -1.4, 2.5].map(roundAway), [1, 1, -1, -1, 3]);
});

test("a dot has as many points as its area wherever it is", () => {
  // pi / 4 * 1.5^2 pitches of 16 by 16 points each: 452.39
  for (let phase = 0; phase < 64; ++phase) {
    const points = dotPoints(SHAPE, phase % 8, phase >> 3);
    assert.equal(points.length, 452);
    assert.equal(new Set(points.map(({x, y}) => `${x} ${y}`)).size, 452);
  }
});

test("a dot's points are about its centre", () => {
  const mean = (values) => values.reduce((sum, one) => sum + one, 0) / values.length;
  const points = dotPoints(SHAPE, 4, 6); // points are two eighths wide
  assert.ok(Math.abs(mean(points.map(({x}) => 2 * x + 1)) - 4) < 0.05);
  assert.ok(Math.abs(mean(points.map(({y}) => 2 * y + 1)) - 6) < 0.05);
});

test("a dot of a stretched grid is stretched", () => {
  const points = dotPoints({diameter: 1, cellsX: 8, cellsY: 4}, 0, 0);
  const span = (values) => Math.max(...values) - Math.min(...values) + 1;
  assert.equal(span(points.map(({x}) => x)), 32);
  assert.equal(span(points.map(({y}) => y)), 16);
});

test("a stamp has the points of its dot", () => {
  const inked = makeStamp(SHAPE, 3, 5).reduce((sum, cell) => sum + countPoints(cell.bits), 0);
  assert.equal(inked, 452);
});
