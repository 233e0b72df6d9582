// The part of a report that the browser prints: sliders, the sheet on a canvas, its profile and its figures.

import {countPoints} from "./dots.mjs";
import {sheetFigures} from "./figures.mjs";
import {profileSvg} from "./profile.mjs";
import {Sheet} from "./sheet.mjs";

const FIGURE_NAMES = [["meanLightness", "mean L*"], ["bandingRms", "banding, L*"],
  ["plainRms", "banding without the eye, L*"]];

/** The mark that has these errors, if Dotweave has printed them. */
export function findMark(marks, errors, tint) {
  const wanted = {...errors, tint};
  return marks.find((mark) => Object.keys(wanted).every((name) => Math.abs(mark[name] - wanted[name]) < 1e-9));
}

/** Grey of a reflectance on a screen that shows paper as white: sRGB. */
export function screenGrey(share) {
  const encoded = share <= 0.0031308 ? 12.92 * share : 1.055 * share ** (1 / 2.4) - 0.055;
  return Math.round(255 * Math.min(Math.max(encoded, 0), 1));
}

/** Draws the cells of a printed sheet. */
function drawSheet(canvas, sheet) {
  const greys = Array.from({length: 17}, (_, inked) =>
    screenGrey(sheet.reflectance(inked, 16) / sheet.window.paperReflectance));
  canvas.width = sheet.width;
  canvas.height = sheet.height;
  const context = canvas.getContext("2d");
  const image = context.createImageData(sheet.width, sheet.height);
  for (let i = 0; i < sheet.cells.length; ++i) {
    image.data.fill(greys[countPoints(sheet.cells[i])], 4 * i, 4 * i + 3);
    image.data[4 * i + 3] = 255;
  }
  context.putImageData(image, 0, 0);
}

/** Fills the table that compares the browser with Dotweave. */
function showFigures(table, figures, mark) {
  table.tBodies[0].replaceChildren(...FIGURE_NAMES.map(([key, name]) => {
    const row = document.createElement("tr");
    const head = document.createElement("th");
    head.scope = "row";
    head.textContent = name;
    const cells = [figures[key].toFixed(3), mark ? mark[key].toFixed(3) : "not printed"].map((text) => {
      const cell = document.createElement("td");
      cell.textContent = text;
      return cell;
    });
    row.append(head, ...cells);
    return row;
  }));
}

/** Starts the sliders. @param data  "sketch" of the report's data */
export function startSketch(data) {
  const sheet = new Sheet(data);
  const byId = (id) => document.getElementById(`sketch-${id}`);
  const sliders = [...document.querySelectorAll("#sketch input[data-error]")];
  const tintChoice = byId("tint");
  const canvas = byId("sheet");
  const show = () => {
    const errors = Object.fromEntries(sliders.map((slider) => [slider.dataset.error, Number(slider.value)]));
    const tint = Number(tintChoice.value);
    const mark = findMark(data.marks, errors, data.wanted[tint].tint);
    sheet.print(errors, tint);
    const figures = sheetFigures(sheet, data.weights);
    drawSheet(canvas, sheet);
    const {svg, scale} = profileSvg(figures.lines, mark?.lines, sheet.height);
    byId("profile").innerHTML = svg; // numbers only, from this page
    showFigures(byId("figures"), figures, mark);
    for (const slider of sliders)
      byId(`${slider.dataset.error}-value`).textContent = slider.value;
    const known = mark ? "has printed this setting: its profile is dashed." : "has not printed this setting.";
    const text = `Mean L* ${figures.meanLightness.toFixed(2)}, banding ${figures.bandingRms.toFixed(3)}; ` +
      `the profile goes from L* ${scale.least} at the left to ${scale.most} at the right. `;
    byId("status").textContent = `${text}Dotweave ${known}`;
    canvas.setAttribute("aria-label",
      `The sheet with these errors, mean L* ${figures.meanLightness.toFixed(1)}`);
  };
  const set = (slider, value) => {
    slider.value = value;
    show();
  };
  for (const control of [...sliders, tintChoice])
    control.addEventListener("input", show);
  for (const button of document.querySelectorAll("#sketch button[data-for]")) {
    const slider = document.getElementById(button.dataset.for);
    button.addEventListener("click", () => set(slider, button.dataset.value));
  }
  byId("reset").addEventListener("click", () => {
    for (const slider of sliders)
      slider.value = slider.defaultValue;
    show();
  });
  show();
}
