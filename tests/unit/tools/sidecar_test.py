#!/usr/bin/env python3
"""Reads what `corvane-tools share` writes as other programs would, from the description of the
format alone: 1,000 calls, field by field; each once, however often the program is stopped.

`sidecar_test.py PROGRAM` ends with 1 and a line for each thing that is wrong.
"""
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import wave
import xml.etree.ElementTree as ElementTree

ZONE = "CET-1CEST,M3.5.0,M10.5.0/3"
CALLS = 1000
DAY = (2026, 7, 15)
LABELS = ["Fire north", "K\u00f6ln \u20ac", "</script><b>", 'say "no"\\', "$(touch x) `y` %PATH%",
          "", "=1+1"]

# Each field of a sidecar in its order, with the type that its readers take.
FIELDS = [("freq", int), ("start_time", int), ("stop_time", int), ("emergency", int),
          ("priority", int), ("mode", int), ("duplex", int), ("encrypted", int),
          ("call_length", int), ("talkgroup", int), ("talkgroup_tag", str),
          ("talkgroup_description", str), ("talkgroup_group_tag", str), ("talkgroup_group", str),
          ("audio_type", str), ("short_name", str), ("freqList", list), ("srcList", list),
          ("timestamp", int), ("system", int), ("corvane", dict)]
FREQ_FIELDS = [("freq", int), ("time", int), ("pos", int), ("len", int), ("error_count", int),
               ("spike_count", int)]
SRC_FIELDS = [("src", int), ("time", int), ("pos", int), ("emergency", int), ("signal_system", str),
              ("tag", str), ("tag_ota", str)]
OWN_FIELDS = ["mcc", "mnc", "la", "call_id", "carrier", "slot", "end_reason"]

wrong = []


def check(good, text):
    if not good:
        wrong.append(text)


def equal(found, expected, text):
    check(found == expected and isinstance(found, type(expected)),
          f"{text}: {found!r}, not {expected!r}")


class Fields(list):
    """Names and values as they stand, so that order and repeats are seen."""


def as_dict(where, found, layout):
    check(isinstance(found, Fields), f"{where}: no object")
    equal([name for name, _ in found], [name for name, _ in layout], f"{where}: names")
    for (name, value), (_, kind) in zip(found, layout):
        if kind not in (list, dict):
            check(type(value) is kind, f"{where}: {name} is {value!r}")
    return dict(found)


def call_facts(index):
    label = LABELS[index % len(LABELS)]
    return {"gssi": 9000 + index % len(LABELS), "call_id": index % 900 + 1, "label": label,
            "start": 5 * 3600 + index * 40, "carrier": 2600 + index % 14, "seconds": 1 + index % 5,
            "talkers": [(5000 + index % 7, 0), (5100 + index % 5, 2)][:1 + index % 2],
            "end": ("released", "timed_out", "disconnected", "forced")[index % 4]}


def clock(second):
    return "%02d:%02d:%02d" % (second // 3600, second // 60 % 60, second % 60)


def log_lines(day, facts):
    date = "%02d/%02d/%04d " % (day[2], day[1], day[0])
    at, number = facts["start"], facts["call_id"]
    label = f" [{facts['label']}]" if facts["label"] else " "
    lines = [f"{date}{clock(at)} - Call ID: {number} - On carrier: {facts['carrier']} - Group: "
             f"{facts['gssi']}{label}"]
    for index, (ssi, pos) in enumerate(facts["talkers"]):
        what = "Calling SSI" if index == 0 else "VC D-TX-Granted SSI"
        lines.append(f"{date}{clock(at + pos)} - Call ID: {number} - {what}: {ssi} [Radio {ssi}]")
    end = date + clock(at + 10)
    lines.append({"released": f"{end} - Call ID: {number} - VC D-Released",
                  "disconnected": f"{end} - Call ID: {number} - VC D-Disconnect",
                  "timed_out": f"{end} - Call timeout occured - Call ID: {number}",
                  "forced": f"{end} - Manual D-Release occured"}[facts["end"]])
    return "".join(line + "\r\n" for line in lines).encode("cp1252")


def recording_name(facts):
    forced = "_call_forced_end" if facts["end"] == "forced" else ""
    return "%s_%d_%d%s.wav" % (clock(facts["start"] + 1).replace(":", ""), facts["call_id"],
                               facts["gssi"], forced)


def write_recording(folder, facts):
    """As the recorder does: under another name until it is whole."""
    temporary = os.path.join(folder, "newTmp.wav")
    with wave.open(temporary, "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(2000)
        file.writeframes(b"\x10\x10" * 2000 * facts["seconds"])
    os.rename(temporary, os.path.join(folder, recording_name(facts)))


def make_day(program_folder, day):
    folder = os.path.join(program_folder, "Daily", "%04d%02d%02d" % day)
    os.makedirs(os.path.join(folder, "Record"))
    date = "%02d/%02d/%04d " % (day[2], day[1], day[0])
    with open(os.path.join(folder, "TETRA_event.log"), "wb") as log:
        log.write((date + "00:00:01 - MCC:262  MNC:42  LA:101\r\n").encode())
    return folder


def add_call(folder, day, facts):
    with open(os.path.join(folder, "TETRA_event.log"), "ab") as log:
        log.write(log_lines(day, facts))
    write_recording(os.path.join(folder, "Record"), facts)


def sidecars(outbox):
    found = []
    for folder, _, names in os.walk(outbox):
        found += [os.path.join(folder, name) for name in names if name.endswith(".json")]
    return sorted(found)


def read_sidecar(path, day, facts):
    where = os.path.basename(path)
    with open(path, "rb") as file:
        found = as_dict(where, json.loads(file.read().decode("utf-8"), object_pairs_hook=Fields),
                        FIELDS)
    begin = int(time.mktime(day + (0, 0, facts["start"] + 1, 0, 0, -1)))
    tag = facts["label"] or "-"
    expected = {"freq": 0, "start_time": begin, "stop_time": begin + facts["seconds"],
                "emergency": 0, "priority": 0, "mode": 0, "duplex": 0, "encrypted": 0,
                "call_length": facts["seconds"], "talkgroup": facts["gssi"], "talkgroup_tag": tag,
                "talkgroup_description": tag, "talkgroup_group_tag": "-", "talkgroup_group": "-",
                "audio_type": "digital tdma", "short_name": "262-42", "timestamp": begin * 1000,
                "system": 26200042}
    for name, value in expected.items():
        equal(found[name], value, f"{where}: {name}")
    equal(len(found["freqList"]), 1, f"{where}: freqList")
    freq = as_dict(where, found["freqList"][0], FREQ_FIELDS)
    equal((freq["time"], freq["pos"], freq["len"]), (begin, 0, facts["seconds"]), f"{where}: freq")
    equal(len(found["srcList"]), len(facts["talkers"]), f"{where}: srcList")
    for source, (ssi, pos) in zip(found["srcList"], facts["talkers"]):
        source = as_dict(where, source, SRC_FIELDS)
        pos = max(0, pos - 1)
        equal((source["src"], source["pos"], source["time"], source["tag"]),
              (ssi, pos, begin + pos, f"Radio {ssi}"), f"{where}: src")
    own = dict(found["corvane"])
    equal([name for name, _ in found["corvane"]], OWN_FIELDS, f"{where}: corvane")
    equal([own[name] for name in OWN_FIELDS],
          [262, 42, None, facts["call_id"], facts["carrier"], None, facts["end"]],
          f"{where}: corvane")
    with wave.open(path[:-5] + ".wav") as file:
        equal(file.getnframes(), 2000 * facts["seconds"], f"{where}: the recording")


def read_a_day(program, root):
    folder = make_day(os.path.join(root, "day"), DAY)
    calls = [call_facts(index) for index in range(CALLS)]
    for facts in calls:
        add_call(folder, DAY, facts)
    outbox = os.path.join(root, "outbox")
    command = [program, "share", folder, "--outbox", outbox]
    equal(subprocess.run(command, stdout=subprocess.DEVNULL).returncode, 0, "exit status")
    found = sidecars(outbox)
    equal(len(found), CALLS, "sidecars")
    by_name = {os.path.basename(path): path for path in found}
    for facts in calls:
        name = recording_name(facts)[:-4] + ".json"
        if name in by_name:
            read_sidecar(by_name[name], DAY, facts)
        else:
            wrong.append(f"{name} is not there")
    left = [name for _, _, names in os.walk(outbox) for name in names if name.endswith(".part")]
    equal(left, [], "left behind")
    again = subprocess.run(command, stdout=subprocess.PIPE)
    equal((again.returncode, again.stdout), (0, b""), "a second run")


def follow_calls(program, root):
    """The program is killed again and again while calls end, and its reader takes files away."""
    program_folder, outbox = os.path.join(root, "live"), os.path.join(root, "live-outbox")
    # Far from midnight, wherever this runs.
    hour = time.gmtime().tm_hour
    os.environ["TZ"] = "NOON%+d" % (hour - 12)
    time.tzset()
    now = time.localtime()
    day = (now.tm_year, now.tm_mon, now.tm_mday)
    folder = make_day(program_folder, day)
    calls = [call_facts(index) for index in range(60)]
    taken, shared = [], 0

    def take():
        for path in sidecars(outbox):
            check(os.path.exists(path[:-5] + ".wav"), f"{path} came before its recording")
            taken.append(os.path.basename(path))
            os.remove(path)
            os.remove(path[:-5] + ".wav")

    process = None
    deadline = time.monotonic() + 240
    while len(taken) < len(calls) and time.monotonic() < deadline:
        if process is None:
            process = subprocess.Popen([program, "share", "--follow", "--folder", program_folder,
                                        "--outbox", outbox], stdout=subprocess.DEVNULL)
        for _ in range(2):
            if shared < len(calls):
                add_call(folder, day, calls[shared])
                shared += 1
        time.sleep(0.2)
        take()
        if shared % 20 == 0 and shared < len(calls):
            process.send_signal(signal.SIGKILL)
            process.wait()
            process = None
    if process is not None:
        time.sleep(2)
        take()
        check(process.poll() is None, "the program goes on")
        process.terminate()
        process.wait()
    expected = sorted(recording_name(facts)[:-4] + ".json" for facts in calls)
    equal(sorted(taken), expected, "calls that were followed")
    recordings = os.listdir(os.path.join(folder, "Record"))
    equal(len(recordings), len(calls), "recordings that are still there")


def report(results):
    """Leaves the cases where the test programs leave theirs, in the same form."""
    suite = ElementTree.Element("testsuites")
    for name, lines in results:
        case = ElementTree.SubElement(suite, "testcase", name=name, classname="SidecarReader",
                                      status="run", result="completed")
        for line in lines[:20]:
            print(f"{name}: {line}")
            ElementTree.SubElement(case, "failure", message=line)
    where = os.environ.get("GTEST_OUTPUT", "")
    if where.startswith("xml:") and where.endswith("/"):
        ElementTree.ElementTree(suite).write(os.path.join(where[4:], "sidecar_reader.xml"))


def main(arguments):
    os.environ["TZ"] = ZONE
    time.tzset()
    root = tempfile.mkdtemp(prefix="corvane-sidecars-")
    results = []
    try:
        for case in (read_a_day, follow_calls):
            wrong.clear()
            case(arguments[0], root)
            results.append((case.__name__, list(wrong)))
    finally:
        shutil.rmtree(root)
    report(results)
    bad = sum(1 for _, lines in results if lines)
    print(f"{len(results)} cases, {bad} failed")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
