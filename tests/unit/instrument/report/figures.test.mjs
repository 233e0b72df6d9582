import assert from "node:assert/strict";
import {test} from "node:test";

import {bandingRms, lightness} from "../../../../instrument/report/figures.mjs";
import {profilePath, profileScale} from "../../../../instrument/report/profile.mjs";
import {findMark, screenGrey} from "../../../../instrument/report/sketch.mjs";

const near = (a, b, most = 1e-9) => assert.ok(Math.abs(a - b) < most, `${a} is not near ${b}`);

test("paper, ink and a grey have the lightness of CIE 1976", () => {
  near(lightness(1), 100);
  near(lightness(0), 0);
  near(lightness(0.184186518), 50, 1e-6); // (66 / 116)^3
  near(lightness(216 / 24389), 8);
});

test("a sinusoid's banding is its amplitude over the root of two", () => {
  for (const count of [64, 81]) {
    const profile = Array.from({length: count}, (_, i) => 50 + 3 * Math.sin(2 * Math.PI * 5 * i / count));
    near(bandingRms(profile), 3 / Math.SQRT2);
    const weights = Array.from({length: count}, (_, waves) => waves === 5 ? 0.5 : 1);
    near(bandingRms(profile, weights), 1.5 / Math.SQRT2);
  }
});

test("the shortest period counts once", () => {
  near(bandingRms([51, 49, 51, 49]), 1);
});

test("without weights banding is the standard deviation", () => {
  near(bandingRms([10, 20, 60, 30, 30]), Math.sqrt((400 + 100 + 900) / 5));
});

test("a profile's scale goes in tens", () => {
  assert.deepEqual(profileScale([[16, 16]]), {least: 10, most: 20});
  assert.deepEqual(profileScale([[20, 31], [8]]), {least: 0, most: 40});
});

test("a profile's path goes from the left margin to the right", () => {
  assert.equal(profilePath([0, 10], {least: 0, most: 10}, 4), "M8.0 2.0L212.0 6.0");
});

test("a mark is found by all its settings", () => {
  const mark = {tint: 1, advance: 0.25, tilt: 0, bidirectional: 0, dead: -1};
  const errors = {advance: 0.25, tilt: 0, bidirectional: 0, dead: -1};
  assert.equal(findMark([mark], errors, 1), mark);
  assert.equal(findMark([mark], errors, 0.4), undefined);
  assert.equal(findMark([mark], {...errors, dead: 3}, 1), undefined);
});

test("paper is white on the screen and half its light is sRGB 188", () => {
  assert.deepEqual([1, 0.5, 0, 2].map(screenGrey), [255, 188, 0, 255]);
});
