#!/usr/bin/env python3
"""Opens the report of a mode in headless Chromium and uses it as its reader would.

  check_browser.py DOTWEAVE [--pictures FOLDER]

--pictures also writes what the README shows. Nothing here waits for a time to pass: the scripts of the page do all
their work in the events that they get.
"""
import argparse
import base64
import json
import math
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

FLAGS = ("--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage")
SLIDERS = ("advance", "tilt", "bidirectional", "dead")
FIGURES = ("meanLightness", "bandingRms", "plainRms")
CLOSE = 0.02  # what the sketch may differ from the command
WIDTHS = (360, 800, 1400)


def started(folder):
    options = Options()
    for flag in (*FLAGS, f"--user-data-dir={folder}/profile"):
        options.add_argument(flag)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class Report:
    def __init__(self, browser, address):
        self.browser, self.address = browser, address
        self.show(1400, "light")
        self.data = json.loads(self.script("return document.getElementById('report-data').textContent"))

    def show(self, width, scheme, media=""):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": 900, "deviceScaleFactor": 1, "mobile": False})
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "media": media, "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        self.browser.get(self.address)

    def script(self, text, *arguments):
        return self.browser.execute_script(text, *arguments)

    def find(self, name):
        return self.browser.find_element(By.ID, name)

    def screenshot(self, selector, width, height, file):
        top = self.script("return document.querySelector(arguments[0]).getBoundingClientRect().top + scrollY", selector)
        shot = self.browser.execute_cdp_cmd("Page.captureScreenshot", {
            "captureBeyondViewport": True, "clip": {"x": 0, "y": top, "width": width, "height": height, "scale": 1}})
        file.write_bytes(base64.b64decode(shot["data"]))

    def canvas(self):
        return self.script("return document.getElementById('sketch-sheet').toDataURL()")

    def canvas_lightness(self):
        """L* of the mean light that the canvas shows, its paper being as bright as the command's."""
        mean = self.script("""
            const canvas = document.getElementById('sketch-sheet');
            const copy = new OffscreenCanvas(canvas.width, canvas.height).getContext('2d', {willReadFrequently: true});
            copy.drawImage(canvas, 0, 0);
            const {data} = copy.getImageData(0, 0, canvas.width, canvas.height);
            let sum = 0;
            for (let i = 0; i < data.length; i += 4) {
              const grey = data[i] / 255;
              sum += grey <= 0.04045 ? grey / 12.92 : ((grey + 0.055) / 1.055) ** 2.4;
            }
            return sum / (data.length / 4);""")
        return 116 * math.cbrt(mean * self.data["sketch"]["window"]["paperReflectance"]) - 16

    def figures(self):
        rows = self.script("return [...document.querySelectorAll('#sketch-figures tbody tr')].map("
                           "(row) => [...row.querySelectorAll('td')].map((cell) => cell.textContent))")
        return dict(zip(FIGURES, rows))

    def profile(self, curve):
        """The x of each line of a profile, in the plot's own unit."""
        paths = self.browser.find_elements(By.CSS_SELECTOR, f"#sketch-profile .{curve}")
        return [float(x) for x in re.findall(r"[ML]([\d.]+) ", paths[0].get_attribute("d"))] if paths else None

    def tint(self, share):
        index = [one["tint"] for one in self.data["sketch"]["wanted"]].index(share)
        self.find("sketch-tint").send_keys(Keys.HOME, Keys.ARROW_DOWN * index)

    def mark_button(self, slider, value):
        buttons = self.browser.find_elements(By.CSS_SELECTOR, f"button[data-for='sketch-{slider}']")
        return next(one for one in buttons if float(one.get_attribute("data-value")) == value)

    def errors_set(self, mark):
        self.find("sketch-reset").click()
        self.tint(mark["tint"])
        for slider in SLIDERS:
            if mark[slider] != (-1 if slider == "dead" else 0):
                self.mark_button(slider, mark[slider]).click()


def near(found, wanted, least):
    """Within 2 %, or where both are next to nothing."""
    return abs(found - wanted) <= max(CLOSE * abs(wanted), least)


def check_figures(report):
    """At every mark the picture, the profile and the figures are those of the command."""
    marks = report.data["sketch"]["marks"]
    assert len(marks) >= 18, len(marks)
    pictures = set()
    for mark in marks:
        name = {key: mark[key] for key in ("tint", *SLIDERS)}
        report.errors_set(mark)
        figures = report.figures()
        for key in FIGURES:
            sketch, shown = (float(text) for text in figures[key])
            assert near(shown, mark[key], 0.0006), (name, key, shown, mark[key])
            assert near(sketch, mark[key], 0.002), (name, key, sketch, mark[key])
        assert near(report.canvas_lightness(), mark["meanLightness"], 0), (name, report.canvas_lightness())
        sketch, shown = report.profile("curve-0"), report.profile("curve-1")
        assert len(sketch) == len(shown) == len(mark["lines"]), name
        # The plot's own scale, from the two lines that are furthest apart; then every line of the sketch on it.
        low, high = mark["lines"].index(min(mark["lines"])), mark["lines"].index(max(mark["lines"]))
        if mark["lines"][high] - mark["lines"][low] > 0.5:
            unit = (mark["lines"][high] - mark["lines"][low]) / (shown[high] - shown[low])
            for x, wanted in zip(sketch, mark["lines"]):
                assert near(mark["lines"][low] + (x - shown[low]) * unit, wanted, 0.1), (name, x, wanted)
        pictures.add(report.canvas())
    assert len(pictures) == len(marks), "two marks look the same"
    print(f"{len(marks)} marks agree with the command")


def check_unmarked(report):
    """Between marks the sketch has values of its own, and none of the command."""
    report.find("sketch-reset").click()
    report.mark_button("advance", 0.5).click()
    report.mark_button("dead", max(mark["dead"] for mark in report.data["sketch"]["marks"])).click()
    assert report.profile("curve-1") is None
    assert all(cells[1] == "not printed" for cells in report.figures().values()), report.figures()
    report.find("sketch-reset").click()
    assert report.profile("curve-1") is not None


def check_keyboard(report):
    """Every control is reached by Tab, and the arrow keys move each slider."""
    report.show(800, "light")
    controls = report.script("return [...document.querySelectorAll('a, input, select, button')]"
                             ".filter((one) => !one.disabled)"
                             ".map((one, index) => { one.dataset.stop = index; }).length")
    reached = set()
    for _ in range(controls + 2):
        report.browser.switch_to.active_element.send_keys(Keys.TAB)
        stop = report.script("return document.activeElement.dataset.stop")
        style = report.script("const style = getComputedStyle(document.activeElement);"
                              "return [style.outlineStyle, style.outlineWidth]")
        if stop is not None:
            assert style[0] != "none" and style[1] != "0px", f"nobody sees where the focus is: {stop}"
            reached.add(stop)
    assert len(reached) == controls, f"Tab reaches {len(reached)} of {controls}"
    for slider in SLIDERS:
        before = (report.canvas(), report.figures(), report.profile("curve-0"))
        value = float(report.find(f"sketch-{slider}").get_attribute("value"))
        for _ in range(6): # a row at the top of the head may be beside the window
            report.find(f"sketch-{slider}").send_keys(Keys.PAGE_UP)
        assert float(report.find(f"sketch-{slider}").get_attribute("value")) > value, slider
        assert float(report.find(f"sketch-{slider}-value").text) > value, slider
        after = (report.canvas(), report.figures(), report.profile("curve-0"))
        assert all(one != other for one, other in zip(before, after)), f"{slider} changes nothing"
    picture = report.find("mask-picture")
    before = picture.get_attribute("src")
    report.find("mask-color").send_keys(Keys.ARROW_RIGHT)
    report.find("mask-position").send_keys(Keys.ARROW_RIGHT, Keys.ARROW_RIGHT)
    assert picture.get_attribute("src") == report.data["masks"]["pictures"][1][2] != before
    assert picture.get_attribute("alt") == "Mask of colour 1, position 2"
    assert report.find("mask-caption").text == "Colour 1, position 2."


def check_looks(report):
    """Nothing is wider than the window, all pictures decode, and text has a contrast of 7 in either scheme."""
    contrast = """
        const light = (text) => {
          const [r, g, b] = text.match(/[\\d.]+/g).map((one) => {
            const share = one / 255;
            return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
          });
          return 0.2126 * r + 0.7152 * g + 0.0722 * b;
        };
        const style = getComputedStyle(document.body);
        return [light(style.color), light(style.backgroundColor)];"""
    for scheme in ("light", "dark"):
        for width in WIDTHS:
            report.show(width, scheme)
            wide = report.script("return document.documentElement.scrollWidth")
            assert wide <= width, f"{wide} pixels in a window of {width}"
        ink, paper = report.script(contrast)
        assert (ink < paper) == (scheme == "light"), scheme
        assert (max(ink, paper) + 0.05) / (min(ink, paper) + 0.05) >= 7, scheme
    broken = report.script("return [...document.images].filter("
                           "(one) => !one.complete || one.naturalWidth === 0).length")
    assert broken == 0, f"{broken} pictures are broken"
    report.show(800, "dark", "print")
    ink, paper = report.script(contrast)
    assert ink < paper, "a printed page is dark"
    assert not report.find("mask-color").is_displayed(), "a printed page has sliders"
    pdf = base64.b64decode(report.browser.execute_cdp_cmd("Page.printToPDF", {})["data"])
    assert pdf.startswith(b"%PDF"), "the page cannot be printed"


def check_silence(report):
    """No message, and no request but for the page itself."""
    messages = report.browser.get_log("browser")
    assert not messages, messages
    events = [json.loads(entry["message"])["message"] for entry in report.browser.get_log("performance")]
    asks = [event["params"] for event in events if event["method"] == "Network.requestWillBeSent"]
    # Of the page alone: a browser has pages of its own.
    asked = {ask["request"]["url"] for ask in asks if ask["documentURL"] == report.address}
    others = [url for url in asked if url != report.address and not url.startswith("data:")]
    assert report.address in asked, "the requests are not seen"
    assert not others, others


def write_pictures(report, folder):
    report.show(900, "light")
    report.mark_button("advance", 0.5).click()
    report.screenshot("#sketch", 900, 720, folder / "report-sketch.png")
    report.show(360, "dark")
    report.screenshot("header", 360, 720, folder / "report-phone.png")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("tool", type=Path)
    parser.add_argument("--pictures", type=Path)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as name:
        page = Path(name) / "report.html"
        subprocess.run([arguments.tool.resolve(), "report", "--preset", "production", "--out", page, "--quiet"],
                       check=True)
        browser = started(name)
        try:
            report = Report(browser, page.as_uri())
            if arguments.pictures:
                write_pictures(report, arguments.pictures)
                report.show(1400, "light")
            for check in (check_figures, check_unmarked, check_keyboard, check_looks, check_silence):
                check(report)
                print(f"{check.__name__}: good")
        finally:
            browser.quit()


if __name__ == "__main__":
    sys.exit(main())
