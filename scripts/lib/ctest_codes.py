#!/usr/bin/env python3
"""Prints `name=0` or `name=1` for each program in a JUnit file written by ctest."""
import sys
import xml.etree.ElementTree as ElementTree

for case in ElementTree.parse(sys.argv[1]).getroot().iter("testcase"):
    passed = case.get("status") == "run" and case.find("failure") is None
    print(f"{case.get('name')}={0 if passed else 1}")
