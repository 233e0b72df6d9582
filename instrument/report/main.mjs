// Starts a report's scripts. The page is complete without them, but for the sliders.

import {startMasks} from "./masks.mjs";
import {startSketch} from "./sketch.mjs";

const reportData = JSON.parse(document.getElementById("report-data").textContent);
startMasks(reportData.masks);
startSketch(reportData.sketch);
