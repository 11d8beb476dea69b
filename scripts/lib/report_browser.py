"""A report in headless Chromium.

report_browser.py use PAGE FOLDER TOOLS [AXE]: does with the page of the day folders in FOLDER what
a listener does, and looks at what comes of it; makes another page with the program TOOLS, full of
labels that would do harm, and looks for harm. The script AXE looks for what hinders some readers.
$REPORT_RESULTS names a file for the results.

report_browser.py measure PAGE [OPEN_MS FILTER_MS]: tells how long opening and filtering take, and
fails when that is more than these.
"""
import csv
import glob
import io
import json
import os
import re
import subprocess
import sys
import tempfile

from browser import (Cases, asked_for, brightness, check, complaints, open_page, press, print_page,
                     printed_pages, printed_text, spoken, start_browser, use_scheme, wait_for)
from harmful_day import LABELS, RECORDING, TRANSCRIPT, write_harmful_day

WORDS = ("9", "90", "900", "9001", "group", "group 9002", "14:", "14:2", "53", "531", "released",
         "nothing")
PICTURES = (("light", "light", 1280, 3300), ("dark", "dark", 1280, 3300),
            ("phone", "light", 390, 6000), ("phone-dark", "dark", 390, 6000))
CONTROLS = ("button", "link", "textbox", "searchbox", "spinbutton", "combobox", "checkbox",
            "slider", "grid", "image", "region")


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
    pattern = os.path.join(downloads, "*." + ending)
    for old in glob.glob(pattern):
        os.remove(old)
    driver.execute_script("document.getElementById(arguments[0]).click()", button)
    wait_for(f"the export as {ending}", lambda: glob.glob(pattern))
    with open(glob.glob(pattern)[0], encoding="utf-8", newline="") as file:
        return file.read()


def open_report(driver, page):
    open_page(driver, page)
    wait_for("the page is ready", lambda: driver.execute_script(
        "return document.documentElement.dataset.ready === 'true'"))


def printed_records(tools, folder, form):
    days = sorted(glob.glob(folder + "/Daily/*"))
    return subprocess.run([tools, "report", *days, "-F", form, "-q"], check=True,
                          stdout=subprocess.PIPE, encoding="utf-8").stdout


class Day:
    """The page of a day with the stand-in's traffic."""

    def __init__(self, driver, downloads, page, folder):
        self.driver = driver
        self.downloads = downloads
        self.page = page
        self.folder = folder
        self.recorded = len(glob.glob(folder + "/Daily/*/Record/*.wav"))
        self.logs = ""
        for path in sorted(glob.glob(folder + "/Daily/*/TETRA_event.log")):
            with open(path, encoding="cp1252") as file:
                self.logs += file.read()

    def audio(self, what):
        return self.driver.execute_script(
            f"return document.getElementById('audio').{what}")

    def opens(self):
        open_report(self.driver, self.page)

    def totals(self):
        calls = self.logs.count("- Calling SSI: ")
        check(f"{calls} calls as in the logs", filter_by(self.driver) == calls > 0)
        for group in ("9001", "9002", "9040"):
            in_log = len(re.findall(rf"Group: {group} ", self.logs))
            check(f"{in_log} calls of group {group}", self.driver.execute_script("""
                const select = document.getElementById("group");
                const option = [...select.options].find(
                  (one) => one.textContent.startsWith(arguments[0] + " "));
                return option.textContent.endsWith(`(${arguments[1]})`);""", group, in_log))
        cards = self.driver.execute_script("""
            return [...document.querySelectorAll(".card")].map((card) =>
              [card.lastChild.textContent, card.firstChild.textContent]);""")
        check("the totals at the top are those of the logs",
              ["calls followed", f"{calls:,}"] in cards and
              ["recordings", str(self.recorded)] in cards)

    def filters(self):
        by_group = len(re.findall(r"Group: 9002 ", self.logs))
        chosen = self.driver.execute_script("""
            return [...document.getElementById("group").options].find(
              (one) => one.textContent.startsWith("9002 ")).value;""")
        check(f"{by_group} calls by group", filter_by(self.driver, group=chosen) == by_group)
        spoke = len({(call, start) for start, call in re.findall(
            r"^(.{19}) - Call ID: (\d+) - Calling SSI: 5113\b", self.logs, re.M)})
        chosen = self.driver.execute_script("""
            return [...document.getElementById("radio").options].find(
              (one) => one.textContent.startsWith("5113 ")).value;""")
        check("at least those that a radio began",
              filter_by(self.driver, radio=chosen) >= spoke > 0)
        # No radio of the generated day has a name.
        check("all by what has no name",
              filter_by(self.driver, unnamed=True) == self.logs.count("- Calling SSI: "))
        released = self.logs.count(" - VC D-Released")
        check(f"{released} by a word", filter_by(self.driver, text="released") == released)
        check(f"{self.recorded} by recording",
              filter_by(self.driver, recorded=True) == self.recorded)
        check("fewer by two words", 0 < filter_by(self.driver, text="released 9002") < by_group)
        check("some by their length", 0 < filter_by(self.driver, least="10") < released)
        check("none by a length that no call has", filter_by(self.driver, least="3000") == 0)

    def parts(self):
        """In the order in which somebody asks in the morning."""
        titles = self.driver.execute_script("""
            return [...document.querySelectorAll("h2, h3")].map((one) => one.textContent);""")
        wanted = ["Overview", "Airtime", "How calls ended", "Airtime of groups", "Missed and why",
                  "New groups and radios", "Unnamed", "Silent gaps", "24 hours",
                  "What happened to setups", "Calls", "Groups and radios"]
        check(f"{titles}", [title for title in titles if title in wanted] == wanted)

    def timeline(self):
        """A click where a call is drawn chooses it in the table."""
        found = self.driver.execute_script("""
            const canvas = document.getElementById("lanes");
            const draw = canvas.getContext("2d");
            const data = draw.getImageData(0, 0, canvas.width, canvas.height).data;
            const colours = new Set();
            for (let at = 0; at < data.length; at += 4) {
              colours.add(data[at] << 16 | data[at + 1] << 8 | data[at + 2]);
            }
            const before = document.querySelector("#grid [aria-selected=true]");
            const chosen = new Set();
            for (let x = 160; x < canvas.clientWidth / 2; x += 7) {
              // The table scrolls into view.
              const box = canvas.getBoundingClientRect();
              canvas.dispatchEvent(new MouseEvent("click", {bubbles: true,
                clientX: box.left + x, clientY: box.top + 32}));
              const row = document.querySelector("#grid [aria-selected=true]");
              if (row) chosen.add(row.textContent);
            }
            return {colours: colours.size, before: before !== null, chosen: [...chosen]};""")
        check("lanes are drawn", found["colours"] > 3)
        check(f"clicks choose calls of the lane: {len(found['chosen'])}", not found["before"] and
              len(found["chosen"]) > 3 and all("9001" in text for text in found["chosen"]))

    def setups(self, tools):
        day = glob.glob(self.folder + "/Daily/*")[0]
        printed = subprocess.run([tools, "replay", day + "/TETRA_cc.log", "--events",
                                  day + "/TETRA_event.log", "-F", "csv", "-q"], check=False,
                                 stdout=subprocess.PIPE, encoding="utf-8").stdout
        outcomes = {}
        for row in csv.DictReader(io.StringIO(printed)):
            outcomes[row["outcome"]] = outcomes.get(row["outcome"], 0) + 1
        shown = self.driver.execute_script("""
            return [...document.querySelectorAll("#outcomes tbody tr")].map((row) =>
              [row.cells[0].textContent, row.cells[1].textContent]);""")
        check(f"what replay decided: {shown}", len(shown) > 2 and {
            name.replace(" ", "_"): int(number.replace(",", "")) for name, number in shown} ==
            outcomes)

    def people(self):
        shown = self.driver.execute_script("""
            location.hash = "#group-9002";
            window.dispatchEvent(new Event("hashchange"));
            const person = document.getElementById("person");
            return {text: person.textContent, rows: [...person.querySelectorAll("table")].map(
              (table) => table.tBodies[0].rows.length), hidden: person.hidden};""")
        calls = len(re.findall(r"Group: 9002 ", self.logs))
        check("the page of a group", not shown["hidden"] and
              shown["text"].startswith("Group 9002 Group 9002") and f"{calls} calls" in
              shown["text"])
        check(f"who spoke, who answered whom and when {shown['rows']}", len(shown["rows"]) == 3 and
              all(rows > 0 for rows in shown["rows"]))

    def exports(self, tools):
        everything = filter_by(self.driver)
        printed = printed_records(tools, self.folder, "json").splitlines()
        check("as many records as corvane-tools prints", len(printed) == everything)
        saved = exported(self.driver, self.downloads, "to-json", "json").splitlines()
        check("the same records", [json.loads(line) for line in saved] ==
              [json.loads(line) for line in printed])
        count = filter_by(self.driver, recorded=True, text="9002")
        check("some recordings of group 9002", 0 < count < self.recorded)
        rows = list(csv.DictReader(io.StringIO(
            exported(self.driver, self.downloads, "to-csv", "csv"))))
        records = [json.loads(line) for line in
                   exported(self.driver, self.downloads, "to-json", "json").splitlines()]
        check("CSV and JSON have what is shown", len(rows) == count and len(records) == count and
              [row["start"] for row in rows] == [record["start"] for record in records] and
              all(record["recording"] for record in records))
        playlist = exported(self.driver, self.downloads, "to-m3u", "m3u8").splitlines()
        places = [line for line in playlist if not line.startswith("#")]
        check("the playlist has each recording", playlist[0] == "#EXTM3U" and
              [place.rsplit("/", 1)[1] for place in places] ==
              [record["recording"].rsplit("/", 1)[1] for record in records])
        check("where the playlist says", all(os.path.exists(os.path.join(
            os.path.dirname(self.page), place)) for place in places))

    def plays(self):
        filter_by(self.driver, recorded=True)
        self.driver.execute_script("document.activeElement.blur()")
        press(self.driver, "j")
        wait_for("j plays a recording", lambda: self.audio("currentTime") > 0.2)
        check("it is as long as its file says", self.audio("duration") > 3)

    def queue_by_keyboard(self):
        first = self.audio("src")
        press(self.driver, "j")
        wait_for("j plays the next one",
                 lambda: self.audio("src") != first and self.audio("currentTime") > 0)
        second = self.audio("src")
        press(self.driver, "k")
        wait_for("k plays the one before", lambda: self.audio("src") == first)
        press(self.driver, " ")
        wait_for("space pauses", lambda: self.audio("paused"))
        press(self.driver, " ")
        wait_for("space plays", lambda: not self.audio("paused"))
        self.driver.execute_script("""
            const audio = document.getElementById("audio");
            audio.currentTime = audio.duration - 0.2;""")
        wait_for("the next one follows by itself", lambda: self.audio("src") == second)
        self.driver.execute_script("document.getElementById('audio').pause()")

    def speed_and_pauses(self):
        # The generator's sound pauses from 3.8 s to 6 s, moved by the number of the call.
        speed = self.driver.execute_script("""
            const audio = document.getElementById("audio");
            audio.pause();
            audio.currentTime = 3.2;
            const speed = document.getElementById("speed");
            speed.value = "2";
            speed.dispatchEvent(new Event("change"));
            return audio.playbackRate;""")
        check("twice the speed", speed == 2)
        jumps = self.driver.execute_async_script("""
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
        check("a pause is skipped", len(jumps) > 0)
        self.driver.execute_script("document.getElementById('audio').pause()")

    def fits(self):
        filter_by(self.driver)
        for name, scheme, width, height in PICTURES:
            use_scheme(self.driver, scheme)
            self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
                "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
            wide = self.driver.execute_script("return document.documentElement.scrollWidth")
            check(f"{name}: nothing is wider than the page", wide <= width)
            self.driver.save_screenshot(f"{self.folder}-{name}.png")

    def prints(self):
        """Out of a dark page: each call that is chosen, on white."""
        use_scheme(self.driver, "dark")
        count = filter_by(self.driver, recorded=True)
        drawn = """return [...document.querySelectorAll("#grid .row")]
            .filter((row) => !row.hidden).length"""
        before = self.driver.execute_script(drawn)
        path = self.folder + "-printed.pdf"
        print_page(self.driver, path)
        rows = re.findall(r"^\f? *\d{4}-\d\d-\d\d \d\d:\d\d:\d\d +\d+ s +90",
                          printed_text(path), re.M)
        check(f"{len(rows)} rows for {count} calls", len(rows) == count > before)
        every = filter_by(self.driver)
        print_page(self.driver, path)
        pages = printed_pages(path)
        check(f"none of {len(pages)} pages is dark", min(map(brightness, pages)) > 0.8)
        chart = pages[0][len(pages[0]) * 24 // 100:len(pages[0]) * 31 // 100]
        check(f"the chart is on the first one: {brightness(chart):.2f}", brightness(chart) < 0.96)
        check("of very many it says how many are left out",
              f"{every - 2000} more are not printed" in printed_text(path))
        check("the page is as it was", self.driver.execute_script(drawn) == before and
              self.driver.execute_script(
                  "return document.documentElement.classList.length") == 0)

    def quiet(self):
        allowed = ("file://" + os.path.dirname(os.path.abspath(self.page)), "data:", "blob:")
        asked = asked_for(self.driver)
        check("requests were watched", any(url.endswith(".wav") for url in asked))
        check("none leaves the page", all(url.startswith(allowed) for url in asked))
        said = complaints(self.driver)
        check(f"the browser has nothing to say {said}", not said)

    def has_names(self):
        found = [(role, name) for role, name in spoken(self.driver) if role in CONTROLS]
        check("controls were found", len(found) > 30)
        nameless = [role for role, name in found if not name.strip()]
        check(f"each has a name for screen readers {nameless}", not nameless)

    def hinders_nobody(self, axe, scheme):
        use_scheme(self.driver, scheme)
        with open(axe, encoding="utf-8") as file:
            self.driver.execute_script(file.read())
        found = self.driver.execute_async_script("""
            const done = arguments[arguments.length - 1];
            axe.run().then((results) => done({passed: results.passes.length, violations:
              results.violations.map((one) => [one.impact, one.id, one.nodes[0].html])}));""")
        check("axe-core has looked", found["passed"] > 20)
        serious = [one for one in found["violations"] if one[0] in ("serious", "critical")]
        print(f"    lesser findings: {len(found['violations']) - len(serious)}")
        check(f"nothing serious {serious}", not serious)


class Harm:
    """A page whose labels, transcripts and names of files are not what they should be."""

    def __init__(self, driver, downloads, folder, tools):
        self.driver = driver
        self.downloads = downloads
        self.folder = folder
        self.tools = tools
        self.page = folder + ".html"

    def labels(self):
        write_harmful_day(self.folder)
        subprocess.run([self.tools, "report", *glob.glob(self.folder + "/Daily/*"), "-q", "-o",
                        self.page], check=True)
        asked_for(self.driver)
        complaints(self.driver)
        open_report(self.driver, self.page)
        shown = self.driver.execute_script("""
            return [...document.getElementById("group").options].map((one) => one.textContent);""")
        for number, (_, text) in enumerate(LABELS, start=9001):
            check(f"{text!r} is shown", f"{number} {text} (1)" in shown)
        # Each group and radio has a page of its own.
        titles = self.driver.execute_script("""
            const titles = [];
            for (const link of arguments[0]) {
              location.hash = link;
              window.dispatchEvent(new Event("hashchange"));
              titles.push(document.querySelector("#person h3").textContent);
            }
            return titles;""", [f"#{kind}-{first + at}" for kind, first in
                                (("group", 9001), ("radio", 5001)) for at in range(len(LABELS))])
        check("so are they on the pages of groups and radios", titles == [
            f"{kind} {first + at} {text}" for kind, first in (("Group", 9001), ("Radio", 5001))
            for at, (_, text) in enumerate(LABELS)])
        rows = self.driver.execute_script(
            "return document.querySelectorAll('#grid .row').length")
        check("in the table there is a row for each", rows == len(LABELS))
        found = self.driver.execute_script("""
            const foreign = document.querySelectorAll(
              "img, iframe, object, embed, form, base, link:not([rel=icon]), [onerror]");
            return {harmed: window.harmed, title: document.title,
              foreign: [...foreign].map((one) => one.outerHTML)};""")
        check(f"nothing was run or made {found}", found["foreign"] == [] and
              found["harmed"] is None and found["title"] == "Calls of 2026-11-15")
        check("nothing was asked for",
              all(url.startswith("file:") for url in asked_for(self.driver)))
        said = complaints(self.driver)
        check(f"the browser has nothing to say {said}", not said)

    def exports(self):
        filter_by(self.driver)
        saved = exported(self.driver, self.downloads, "to-json", "json")
        printed = printed_records(self.tools, self.folder, "json").splitlines()
        labels = [json.loads(line)["label"] for line in saved.splitlines()]
        check("labels as they are", labels == [text for _, text in LABELS] ==
              [json.loads(line)["label"] for line in printed])
        table = exported(self.driver, self.downloads, "to-csv", "csv")
        check("the CSV that corvane-tools prints",
              table == printed_records(self.tools, self.folder, "csv"))
        cells = [row["label"] for row in csv.DictReader(io.StringIO(table, newline=""))]
        check("no cell is a formula",
              not any(cell.lstrip()[:1] in ("=", "+", "-", "@") for cell in cells))
        playlist = exported(self.driver, self.downloads, "to-m3u", "m3u8")
        check("one line for each title and place", len(playlist.splitlines()) == 3 and
              playlist.splitlines()[2].endswith(RECORDING))

    def recording(self):
        filter_by(self.driver, text="transcribed")
        self.driver.execute_script("document.activeElement.blur()")
        press(self.driver, "j")
        wait_for("a recording with an odd name is played", lambda: self.driver.execute_script(
            "return document.getElementById('audio').currentTime") > 0.1)
        check("its transcript is text", self.driver.execute_script(
            "return document.getElementById('now-transcript').textContent") == TRANSCRIPT)
        check("and runs nothing", self.driver.execute_script("return window.harmed") is None)


def use(page, folder, tools, axe=""):
    cases = Cases(os.environ.get("REPORT_RESULTS", ""))
    with tempfile.TemporaryDirectory() as downloads:
        driver = cases.run("ChromiumStarts", start_browser, downloads)
        if driver is None:
            cases.end()
        try:
            day = Day(driver, downloads, page, folder)
            cases.run("TheReportOpens", day.opens)
            cases.run("TotalsEqualTheLogs", day.totals)
            cases.run("ItsPartsAreInTheirOrder", day.parts)
            cases.run("TheTimelineLeadsToCalls", day.timeline)
            cases.run("SetupsAreWhatReplayDecides", day.setups, tools)
            cases.run("GroupsHavePages", day.people)
            cases.run("Filters", day.filters)
            cases.run("ExportsWhatIsShown", day.exports, tools)
            cases.run("PlaysARecording", day.plays)
            cases.run("TheQueueByKeyboard", day.queue_by_keyboard)
            cases.run("TwiceTheSpeedWithoutPauses", day.speed_and_pauses)
            cases.run("FitsAScreenAndAPhone", day.fits)
            cases.run("PrintsWhatIsChosen", day.prints)
            cases.run("NoRequestLeavesThePage", day.quiet)
            cases.run("EachControlHasAName", day.has_names)
            for scheme in ("light", "dark") if axe else ():
                cases.run(f"AxeFindsNothingSerious/{scheme}", day.hinders_nobody, axe, scheme)
            harm = Harm(driver, downloads, folder + "-harm", tools)
            cases.run("LabelsDoNoHarm", harm.labels)
            cases.run("LabelsDoNoHarmInExports", harm.exports)
            cases.run("NamesOfFilesDoNoHarm", harm.recording)
        finally:
            driver.quit()
    cases.end()


def measure(page, open_limit=0, filter_limit=0):
    """Opening is the browser's own figure. Filtering is the processor's time of the page for
    script, styles and layout, which other programs on the machine do not lengthen."""
    parts = ("ScriptDuration", "RecalcStyleDuration", "LayoutDuration")
    cases = Cases()
    with tempfile.TemporaryDirectory() as downloads:
        driver = start_browser(downloads)
        try:
            driver.execute_cdp_cmd("Performance.enable", {"timeDomain": "threadTicks"})
            opened = []
            for _ in range(3):
                open_page(driver, page)
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
                print(f"    filter {word!r}: {figures[0]:.1f} ms, middle {figures[2]:.1f} ms")
                slowest = max(slowest, figures[2])
        finally:
            driver.quit()
    print(f"opens in {min(opened):.0f} ms, slowest of three {max(opened):.0f} ms; "
          f"filters in {slowest:.1f} ms, slowest word")
    if open_limit:
        cases.run(f"OpensIn{open_limit}Ms", check, f"{min(opened):.0f} ms",
                  min(opened) <= open_limit)
    if filter_limit:
        cases.run(f"FiltersIn{filter_limit}Ms", check, f"{slowest:.1f} ms",
                  slowest <= filter_limit)
    if open_limit or filter_limit:
        cases.end()


if __name__ == "__main__":
    if sys.argv[1] == "use":
        use(*sys.argv[2:])
    else:
        measure(sys.argv[2], *map(int, sys.argv[3:]))
