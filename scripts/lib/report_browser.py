"""A report in headless Chromium: `use PAGE FOLDER AXE` does what a listener does and looks at what
comes of it, with the script AXE for what hinders some of them; `measure PAGE OPEN_MS FILTER_MS`
tells how long opening and filtering take, and fails when that is more; 0 is no limit."""
import csv
import glob
import io
import json
import os
import re
import sys
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

WORDS = ("9", "90", "900", "9001", "group", "group 9002", "14:", "14:2", "53", "531", "released",
         "nothing")
PICTURES = (("light", "light", 1280, 3300), ("dark", "dark", 1280, 3300),
            ("phone", "light", 390, 6000), ("phone-dark", "dark", 390, 6000))


def browser(downloads):
    options = webdriver.ChromeOptions()
    for switch in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--window-size=1280,1000", "--autoplay-policy=no-user-gesture-required"):
        options.add_argument(switch)
    options.add_experimental_option("prefs", {
        "download.default_directory": downloads,
        "profile.default_content_setting_values.automatic_downloads": 1})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    driver.set_script_timeout(60)
    return driver


def check(what, condition):
    if not condition:
        raise SystemExit(f"FAILED: {what}")
    print(f"ok: {what}")


def wait_for(what, condition, seconds=20):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise SystemExit(f"FAILED: {what} within {seconds} s")
        time.sleep(0.05)
    print(f"ok: {what}")


def press(driver, key):
    code = {"j": 74, "k": 75, " ": 32, "Enter": 13}[key]
    text = {} if key == "Enter" else {"text": key}
    for kind in ("keyDown", "keyUp"):
        driver.execute_cdp_cmd("Input.dispatchKeyEvent", {
            "type": kind, "key": key, "windowsVirtualKeyCode": code,
            **(text if kind == "keyDown" else {})})


def filter_by(driver, **fields):
    return driver.execute_script("""
        document.getElementById("clear").click();
        for (const [id, value] of Object.entries(arguments[0])) {
          const field = document.getElementById(id);
          if (field.type === "checkbox") field.checked = value; else field.value = value;
          field.dispatchEvent(new Event("input"));
        }
        return Number(document.getElementById("count").textContent.split(" ")[0]
          .replaceAll(",", ""));""", fields)


def exported(driver, downloads, button, ending):
    driver.execute_script("document.getElementById(arguments[0]).click()", button)
    pattern = os.path.join(downloads, "*." + ending)
    wait_for(f"the export as {ending}", lambda: glob.glob(pattern))
    with open(glob.glob(pattern)[0], encoding="utf-8", newline="") as file:
        return file.read()


def logs_of(folder):
    text = ""
    for path in sorted(glob.glob(folder + "/Daily/*/TETRA_event.log")):
        with open(path, encoding="cp1252") as file:
            text += file.read()
    return text


def use(page, folder, axe):
    with tempfile.TemporaryDirectory() as downloads:
        driver = browser(downloads)
        try:
            use_page(driver, page, folder, downloads)
            everybody(driver, axe)
        finally:
            driver.quit()


def use_page(driver, page, folder, downloads):
    driver.get("file://" + os.path.abspath(page))
    wait_for("the page is ready", lambda: driver.execute_script(
        "return document.documentElement.dataset.ready === 'true'"))
    logs = logs_of(folder)
    calls = logs.count("- Calling SSI: ")
    check(f"{calls} calls as in the logs", filter_by(driver) == calls)
    for group in ("9001", "9002", "9040"):
        in_log = len(re.findall(rf"Group: {group} ", logs))
        check(f"{in_log} calls of group {group}", filter_by(driver, text=group) >= in_log and
              driver.execute_script("""
                const select = document.getElementById("group");
                const option = [...select.options].find(
                  (one) => one.textContent.startsWith(arguments[0] + " "));
                return option.textContent.endsWith(`(${arguments[1]})`);""", group, in_log))
    released = logs.count(" - VC D-Released")
    check(f"{released} were released", filter_by(driver, text="released") == released)
    recorded = len(glob.glob(folder + "/Daily/*/Record/*.wav"))
    check(f"{recorded} are recorded", filter_by(driver, recorded=True) == recorded)
    check("a length that no call has", filter_by(driver, least="3000") == 0)
    exports(driver, downloads, recorded)
    playing(driver)
    pictures(driver, folder)
    quiet(driver, page)


def exports(driver, downloads, recorded):
    count = filter_by(driver, recorded=True, text="9002")
    check("some recordings of group 9002", 0 < count < recorded)
    rows = list(csv.DictReader(io.StringIO(exported(driver, downloads, "to-csv", "csv"))))
    records = [json.loads(line) for line in
               exported(driver, downloads, "to-json", "json").splitlines()]
    check("CSV and JSON have what is shown", len(rows) == count and len(records) == count and
          [row["start"] for row in rows] == [record["start"] for record in records] and
          all(record["recording"] for record in records))
    playlist = exported(driver, downloads, "to-m3u", "m3u8").splitlines()
    check("the playlist has each recording", playlist[0] == "#EXTM3U" and
          [line.rsplit("/", 1)[1] for line in playlist if not line.startswith("#")] ==
          [record["recording"].rsplit("/", 1)[1] for record in records])


def playing(driver):
    def audio(what):
        return driver.execute_script(f"return document.getElementById('audio').{what}")

    filter_by(driver, recorded=True)
    driver.execute_script("document.activeElement.blur()")
    press(driver, "j")
    wait_for("j plays a recording", lambda: audio("currentTime") > 0.2)
    first = audio("src")
    press(driver, "j")
    wait_for("j plays the next one", lambda: audio("src") != first and audio("currentTime") > 0)
    press(driver, "k")
    wait_for("k plays the one before", lambda: audio("src") == first)
    press(driver, " ")
    wait_for("space pauses", lambda: audio("paused"))
    press(driver, " ")
    wait_for("space plays", lambda: not audio("paused"))
    # The generator's sound pauses from 3.8 s to 6 s, moved by the number of the call.
    quiet_from = driver.execute_script("""
        const audio = document.getElementById("audio");
        audio.pause();
        audio.currentTime = 3.2;
        const speed = document.getElementById("speed");
        speed.value = "2";
        speed.dispatchEvent(new Event("change"));
        return audio.playbackRate;""")
    check("twice the speed", quiet_from == 2)
    times = driver.execute_async_script("""
        const done = arguments[arguments.length - 1];
        const audio = document.getElementById("audio");
        const seen = [];
        let last = audio.currentTime;
        const jump = () => {
          if (audio.currentTime - last > 1) seen.push([last, audio.currentTime]);
          last = audio.currentTime;
          if (seen.length > 0 || audio.ended) done(seen);
        };
        audio.addEventListener("seeked", jump);
        audio.addEventListener("timeupdate", jump);
        audio.play();""")
    check("a pause is skipped", len(times) > 0)
    driver.execute_script("document.getElementById('audio').pause()")


def pictures(driver, folder):
    filter_by(driver)
    for name, scheme, width, height in PICTURES:
        driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
        wide = driver.execute_script("return document.documentElement.scrollWidth")
        check(f"{name}: nothing is wider than the page", wide <= width)
        driver.save_screenshot(f"{folder}-{name}.png")


def everybody(driver, axe):
    """What keeps people from using the page, as far as a program can tell."""
    with open(axe, encoding="utf-8") as file:
        driver.execute_script(file.read())
    for scheme in ("light", "dark"):
        driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        found = driver.execute_async_script("""
            const done = arguments[arguments.length - 1];
            axe.run().then((results) => done({passed: results.passes.length, violations:
              results.violations.map((one) => [one.impact, one.id, one.nodes[0].html])}));""")
        check(f"{scheme}: axe-core has looked", found["passed"] > 20)
        for finding in found["violations"]:
            print(finding)
        check(f"{scheme}: nothing serious hinders anybody", not any(
            impact in ("serious", "critical") for impact, _, _ in found["violations"]))


def quiet(driver, page):
    """What was asked for besides the page, its recordings and what it saved."""
    allowed = ("file://" + os.path.dirname(os.path.abspath(page)), "data:", "blob:")
    asked = []
    for entry in driver.get_log("performance"):
        message = json.loads(entry["message"])["message"]
        if message["method"] == "Network.requestWillBeSent":
            asked.append(message["params"]["request"]["url"])
    check("requests were watched", any(url.endswith(".wav") for url in asked))
    check("no request leaves the page", all(url.startswith(allowed) for url in asked))
    said = [entry["message"] for entry in driver.get_log("browser")]
    check(f"the browser has nothing to say {said}", not said)


def measure(page, open_limit, filter_limit):
    """Opening is the browser's own figure. Filtering is the processor's time of the page for
    script, styles and layout, which other programs on the machine do not lengthen."""
    parts = ("ScriptDuration", "RecalcStyleDuration", "LayoutDuration")
    with tempfile.TemporaryDirectory() as downloads:
        driver = browser(downloads)
        try:
            driver.execute_cdp_cmd("Performance.enable", {"timeDomain": "threadTicks"})
            opened = []
            for _ in range(3):
                driver.get("file://" + os.path.abspath(page))
                opened.append(driver.execute_script(
                    "return performance.getEntriesByType('navigation')[0].loadEventEnd"))

            def used():
                metrics = driver.execute_cdp_cmd("Performance.getMetrics", {})["metrics"]
                return sum(1000 * one["value"] for one in metrics if one["name"] in parts)

            slowest = 0
            for word in WORDS:
                figures = []
                for _ in range(5):
                    filter_by(driver)
                    before = used()
                    driver.execute_script("""
                        const text = document.getElementById("text");
                        text.value = arguments[0];
                        text.dispatchEvent(new Event("input"));
                        document.body.offsetHeight;""", word)
                    figures.append(used() - before)
                figures.sort()
                print(f"filter {word!r}: {figures[0]:.1f} ms, middle {figures[2]:.1f} ms")
                slowest = max(slowest, figures[2])
        finally:
            driver.quit()
    print(f"open: {min(opened):.0f} ms, slowest of three {max(opened):.0f} ms")
    check("opens in time", not open_limit or min(opened) <= open_limit)
    check("filters in time", slowest <= filter_limit)


if __name__ == "__main__":
    if sys.argv[1] == "use":
        use(sys.argv[2], sys.argv[3], sys.argv[4])
    else:
        measure(sys.argv[2], int(sys.argv[3]), int(sys.argv[4]))
