"""Headless Chromium for scripts that look at a page: starting it, keys, requests, and a list of
named cases of which each passes or fails by itself."""
import base64
import json
import os
import re
import subprocess
import sys
import time
import traceback
import xml.etree.ElementTree as ElementTree

from selenium import webdriver
from selenium.webdriver.chrome.service import Service


class Failure(Exception):
    """What a case found wrong."""


def check(what, condition):
    if not condition:
        raise Failure(what)
    print(f"    {what}")


def wait_for(what, condition, seconds=60):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise Failure(f"{what}: not within {seconds} s")
        time.sleep(0.05)
    print(f"    {what}")


class Cases:
    """Runs one case after the other. Results go to `results` as GoogleTest's programs leave them,
    so that scripts/lib/count_tests.py counts them; "" for nowhere."""

    def __init__(self, results=""):
        self.results = results
        self.failed = []
        self.suite = ElementTree.Element("testsuites")

    def run(self, name, function, *arguments):
        print(name)
        case = ElementTree.SubElement(self.suite, "testcase", name=name, classname="Browser",
                                      status="run", result="completed")
        try:
            return function(*arguments)
        except Failure as failure:
            said = str(failure)
        # The driver has exceptions of its own.
        except Exception:  # pylint: disable=broad-except
            said = traceback.format_exc(limit=-3)
        print(f"FAILED: {name}: {said}")
        self.failed.append(name)
        ElementTree.SubElement(case, "failure", message=said)
        return None

    def end(self):
        if self.results:
            ElementTree.ElementTree(self.suite).write(self.results)
        print(f"{len(self.suite) - len(self.failed)} passed, {len(self.failed)} failed")
        sys.exit(1 if self.failed else 0)


def start_browser(downloads):
    options = webdriver.ChromeOptions()
    for switch in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                   "--window-size=1280,1000", "--autoplay-policy=no-user-gesture-required"):
        options.add_argument(switch)
    options.add_experimental_option("prefs", {
        "download.default_directory": downloads,
        "profile.default_content_setting_values.automatic_downloads": 1})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    driver.set_script_timeout(120)
    return driver


def open_page(driver, page):
    driver.get("file://" + os.path.abspath(page))


def press(driver, key):
    code = {"j": 74, "k": 75, " ": 32, "Enter": 13}[key]
    text = {} if key == "Enter" else {"text": key}
    for kind in ("keyDown", "keyUp"):
        driver.execute_cdp_cmd("Input.dispatchKeyEvent", {
            "type": kind, "key": key, "windowsVirtualKeyCode": code,
            **(text if kind == "keyDown" else {})})


def use_scheme(driver, scheme):
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
        "features": [{"name": "prefers-color-scheme", "value": scheme}]})


def print_page(driver, path):
    """On A4, as a PDF."""
    paper = {"paperWidth": 8.27, "paperHeight": 11.69, "printBackground": True}
    printed = driver.execute_cdp_cmd("Page.printToPDF", paper)["data"]
    with open(path, "wb") as file:
        file.write(base64.b64decode(printed))


def printed_text(path):
    return subprocess.run(["pdftotext", "-layout", path, "-"], check=True, stdout=subprocess.PIPE,
                          encoding="utf-8").stdout


def printed_pages(path):
    """The dots of each page from its top left corner on, 0 for black, 255 for white."""
    rest = subprocess.run(["pdftoppm", "-r", "20", "-gray", path], check=True,
                          stdout=subprocess.PIPE).stdout
    pages = []
    while rest:
        header = re.match(rb"P5\s+(\d+)\s+(\d+)\s+255\s", rest)
        end = header.end() + int(header[1]) * int(header[2])
        pages.append(rest[header.end():end])
        rest = rest[end:]
    return pages


def brightness(dots):
    return sum(dots) / (255 * len(dots))


def asked_for(driver):
    """The addresses of all that was asked for since this was called last."""
    asked = []
    for entry in driver.get_log("performance"):
        message = json.loads(entry["message"])["message"]
        if message["method"] == "Network.requestWillBeSent":
            asked.append(message["params"]["request"]["url"])
    return asked


def complaints(driver):
    return [entry["message"] for entry in driver.get_log("browser")]


def spoken(driver):
    """What a screen reader is told of the page: a role and a name for each element."""
    driver.execute_cdp_cmd("Accessibility.enable", {})
    nodes = driver.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
    return [(node["role"]["value"], node.get("name", {}).get("value", "")) for node in nodes
            if not node.get("ignored") and "role" in node]
