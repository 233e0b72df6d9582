// The line profile beside the sheet: lines downwards, L* to the right.

const PROFILE_WIDTH = 220;
const PROFILE_MARGIN = 8;

/** The smallest range of whole tens of L* that holds some profiles. */
export function profileScale(profiles) {
  const all = profiles.flat();
  const least = Math.floor(Math.min(...all) / 10) * 10;
  return {least, most: Math.max(Math.ceil(Math.max(...all) / 10) * 10, least + 10)};
}

/** Where a value is, from the left side of the plot on. */
export function profilePlace(value, scale) {
  const share = (value - scale.least) / (scale.most - scale.least);
  return PROFILE_MARGIN + share * (PROFILE_WIDTH - 2 * PROFILE_MARGIN);
}

/** A profile as the path of an SVG element. */
export function profilePath(lines, scale, lineHeight) {
  return lines.map((value, line) => (line === 0 ? "M" : "L") + profilePlace(value, scale).toFixed(1) + " " +
    ((line + 0.5) * lineHeight).toFixed(1)).join("");
}

/**
 * The plot as text.
 * @param lines   L* of each line that the browser has printed
 * @param marked  the same as Dotweave has printed it; null where it has not
 * @param height  of the plot
 */
export function profileSvg(lines, marked, height) {
  const scale = profileScale(marked ? [lines, marked] : [lines]);
  const lineHeight = height / lines.length;
  let svg = `<svg class="plot" role="img" viewBox="0 0 ${PROFILE_WIDTH} ${height}" ` +
    `preserveAspectRatio="none">` +
    `<title>L* of every line, from ${Math.min(...lines).toFixed(1)} to ${Math.max(...lines).toFixed(1)}; ` +
    `the scale goes from ${scale.least} to ${scale.most}</title>`;
  for (let value = scale.least; value <= scale.most; value += 10)
    svg += `<path class="grid" d="M${profilePlace(value, scale).toFixed(1)} 0V${height}"/>`;
  svg += `<path class="curve curve-0" d="${profilePath(lines, scale, lineHeight)}"/>`;
  if (marked)
    svg += `<path class="curve curve-1 dashed" d="${profilePath(marked, scale, lineHeight)}"/>`;
  return {svg: svg + "</svg>", scale};
}
