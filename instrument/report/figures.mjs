// Figures of a line profile, as instrument/figures gives them.

/** Lightness L* of CIE 1976. */
export function lightness(reflectance) {
  return reflectance <= 216 / 24389 ? 24389 / 27 * reflectance : 116 * Math.cbrt(reflectance) - 16;
}

/**
 * Root mean square of a profile about its mean.
 * @param weights  what the eye takes in of each number of waves, from 0 to half the length. None: all count in
 *                 full.
 */
export function bandingRms(profile, weights) {
  const count = profile.length;
  const cosines = Array.from({length: count}, (_, i) => Math.cos(2 * Math.PI * i / count));
  let power = 0;
  for (let waves = 1; 2 * waves <= count; ++waves) {
    let real = 0;
    let imaginary = 0;
    for (let i = 0; i < count; ++i) {
      real += profile[i] * cosines[waves * i % count];
      imaginary += profile[i] * Math.sin(2 * Math.PI * (waves * i % count) / count);
    }
    const amplitude = Math.hypot(real, imaginary) / count * (weights ? weights[waves] : 1);
    power += (2 * waves === count ? 1 : 2) * amplitude * amplitude; // the upper half mirrors the lower one
  }
  return Math.sqrt(power);
}

/** All figures of a sheet that has been printed. */
export function sheetFigures(sheet, weights) {
  const reflectances = sheet.lineReflectances();
  const lines = reflectances.map(lightness);
  const mean = reflectances.reduce((sum, one) => sum + one, 0) / reflectances.length;
  return {
    lines,
    meanLightness: lightness(mean),
    bandingRms: bandingRms(lines, weights),
    plainRms: bandingRms(lines),
  };
}
