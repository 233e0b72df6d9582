// The masks of a report: one picture, and sliders for the colour and the position.

/** Shows the mask that the sliders ask for. @param data  "masks" of the report's data */
export function startMasks(data) {
  const picture = document.getElementById("mask-picture");
  const caption = document.getElementById("mask-caption");
  const first = picture.src; // the page has the first mask, the data have the others
  const sliders = ["mask-color", "mask-position"].map((id) => document.getElementById(id));
  const show = () => {
    const [color, position] = sliders.map((slider) => Number(slider.value));
    picture.src = data.pictures[color][position] || first;
    picture.alt = `Mask of colour ${color}, position ${position}`;
    caption.textContent = `Colour ${color}, position ${position}.`;
    for (const slider of sliders)
      document.getElementById(`${slider.id}-value`).textContent = slider.value;
  };
  for (const slider of sliders)
    slider.addEventListener("input", show);
  show();
}
