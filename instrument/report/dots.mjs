// Dots as sets of sample points, by the model of instrument/sheet/dotstamps.h. A cell is 4 by 4 sample points,
// one bit each: bit 4 * row + column. Places are in eighths of a cell.

export const CELL_POINTS = 4;
export const CELL_EIGHTHS = 8;

/** Rounds to the nearest whole number, and halves away from zero, as C++ does. */
export function roundAway(value) {
  return Math.sign(value) * Math.floor(Math.abs(value) + 0.5);
}

/** Cells around a centre's cell that a dot does not reach beyond. */
export function dotReach(diameter, cells) {
  return Math.ceil(diameter / 2 * cells) + 2;
}

/**
 * The sample points of a dot: those nearest to its centre, as many as its area has. Of equally near points
 * opposite ones follow each other, so that the dot stays in balance.
 * @param shape   {diameter: row pitches, cellsX, cellsY: cells of a row pitch}
 * @param phaseX  place of the centre in its cell, 0 to 7; phaseY the same
 * @return        points {x, y}, from the first point of the centre's cell on
 */
export function dotPoints(shape, phaseX, phaseY) {
  const eighths = CELL_EIGHTHS / CELL_POINTS;
  const reachX = dotReach(shape.diameter, shape.cellsX);
  const reachY = dotReach(shape.diameter, shape.cellsY);
  const points = [];
  for (let y = -reachY * CELL_POINTS; y < (reachY + 1) * CELL_POINTS; ++y) {
    for (let x = -reachX * CELL_POINTS; x < (reachX + 1) * CELL_POINTS; ++x) {
      const dx = (x * eighths + eighths / 2 - phaseX) * shape.cellsY;
      const dy = (y * eighths + eighths / 2 - phaseY) * shape.cellsX;
      const quadrant = (dx < 0) === (dy < 0) ? (dx < 0 ? 1 : 0) : (dx < 0 ? 3 : 2);
      points.push({distance: dx * dx + dy * dy, offsetY: Math.abs(dy), quadrant, y, x});
    }
  }
  points.sort((a, b) => a.distance - b.distance || a.offsetY - b.offsetY || a.quadrant - b.quadrant ||
                        a.y - b.y || a.x - b.x);
  const area = Math.PI / 4 * shape.diameter * shape.diameter * shape.cellsX * shape.cellsY;
  return points.slice(0, roundAway(area * CELL_POINTS * CELL_POINTS));
}

/** The same points in whole cells around the centre's cell. */
export function makeStamp(shape, phaseX, phaseY) {
  const cells = new Map();
  for (const {x, y} of dotPoints(shape, phaseX, phaseY)) {
    const cellX = Math.floor(x / CELL_POINTS);
    const cellY = Math.floor(y / CELL_POINTS);
    const key = `${cellX} ${cellY}`;
    const bit = 1 << ((y - cellY * CELL_POINTS) * CELL_POINTS + x - cellX * CELL_POINTS);
    const cell = cells.get(key) ?? {x: cellX, y: cellY, bits: 0};
    cell.bits |= bit;
    cells.set(key, cell);
  }
  return [...cells.values()];
}

const pointCounts = Uint8Array.from({length: 65536}, (_, bits) => {
  let count = 0;
  for (let rest = bits; rest > 0; rest &= rest - 1)
    ++count;
  return count;
});

/** Inked sample points of a cell, 0 to 16. */
export function countPoints(bits) {
  return pointCounts[bits];
}
