#!/usr/bin/env python3
"""The page that `tessera preview` writes, in a browser.

page_test.py CHROMIUM FOLDER: the folder has the pages that preview_test.sh makes.
"""

import os
import sys
import time

from browser import Browser
from pages import HOSTILE

program, folder = sys.argv[1:]
failures = 0


def check(what, found, expected):
    global failures
    if found != expected:
        failures += 1
        print(f"FAILED: {what}: {found!r} instead of {expected!r}")


def page(name, **options):
    browser = Browser(program, **options)
    browser.open(os.path.join(folder, name))
    return browser


def text(browser, selector):
    return browser.ask(f"document.querySelector({selector!r})?.textContent")


def active(browser):
    """The cell with the keyboard, as its place and what a screen reader says of it."""
    return browser.ask("document.activeElement.getAttribute('aria-label')")


def choose(browser, field, value):
    browser.ask(f"(() => {{ const field = document.getElementById('filter-{field}');"
                f" field.value = {value!r};"
                " field.dispatchEvent(new Event('input', {bubbles: true})); })()")


def details(browser):
    return browser.ask("Object.fromEntries([...document.querySelectorAll('#details dt')].reverse()"
                       ".map((name) => [name.textContent, name.nextSibling.textContent]))")


with page("changes.html") as browser:
    check("summary", text(browser, "#summary"), "7 cells on 3 sheets · against old.xml: "
          "4 added, 1 changed, 1 removed")
    check("tabs", browser.ask("[...document.querySelectorAll('[role=tab]')].map("
                              "(tab) => tab.textContent)"), ["Pumps5", "Tanks1", "Without a cell1"])
    check("details of the first cell", details(browser),
          {"Value": "one", "Type": "String", "Direction": "out of the project",
           "Object": "A10|P1", "Identifier": "A10|P1", "Property": "Name",
           "Pointer": "Pumps!A1", "Row": "1"})

    # Every step is one that the keyboard alone can make.
    browser.ask("document.querySelector('.cell[tabindex=\"0\"]').focus()")
    for key, control, expected in [
            ("ArrowDown", False, "A2: nothing"),
            ("ArrowRight", False, "B2: 13, FLOW.LMIN, A10|P1|Flow, Value, direction both ways, "
             "changed; also B2: also, FLOW.LMIN, A10|P9, Value, direction both ways, added"),
            ("ArrowRight", True, "C2: gone, FLOW.LMIN, A10|P2, Name, direction both ways, removed"),
            ("End", True, "D90: far, FLOW.LMIN, A10|P3, Description, direction both ways, added"),
            ("ArrowRight", False, "D90: far, FLOW.LMIN, A10|P3, Description, direction both ways, "
             "added"),
            ("Home", True, "A1: one, A10|P1, Name, direction out of the project")]:
        browser.press(key, control)
        check(f"cell after {key}", active(browser), expected)
    browser.press("ArrowDown")
    browser.press("ArrowRight")
    check("difference", text(browser, "#details table tbody"), "value12,513")

    browser.ask("document.getElementById('tab-0').focus()")
    browser.press("ArrowRight")
    check("next tab", browser.ask("document.activeElement.id"), "tab-1")
    check("a sheet's last cell is seen", browser.ask(
        "document.querySelector('.cell[aria-selected=true] .text')?.textContent"), "last")
    browser.press("ArrowRight")
    check("what has no cell", details(browser)["Pointer"], "nowhere")
    browser.press("ArrowRight")
    check("first tab again", browser.ask("document.activeElement.id"), "tab-0")

    for field, value, count in [
            ("object", "a10|p1", "2 of 7 cells"), ("object", "", "7 cells"),
            ("property", "=Name", "2 of 7 cells"), ("property", "", "7 cells"),
            ("direction", "=O", "1 of 7 cells"), ("direction", "", "7 cells"),
            ("change", "any", "6 of 7 cells"), ("change", "=unchanged", "1 of 7 cells"),
            ("change", "=changed", "1 of 7 cells")]:
        choose(browser, field, value)
        check(f"count for {field} {value}", text(browser, "#count"), count)
    check("rows that the filter leaves",
          browser.ask("[...document.querySelectorAll('[role=rowheader]')].map("
                      "(row) => row.textContent)"), ["2"])
    check("tabs tell what is left", text(browser, "#tabs"), "Pumps1/5Tanks0/1Without a cell0/1")
    browser.ask("document.querySelector('button[type=reset]').click()")
    browser.ask("new Promise((done) => setTimeout(done))")
    check("all again", text(browser, "#count"), "7 cells")

    browser.ask("window.dispatchEvent(new Event('beforeprint'))")
    check("lines on paper", browser.ask("document.querySelectorAll('#print tbody tr').length"), 7)
    check("complaints", browser.complaints, [])

with page("hostile.html", dark=True) as browser:
    check("a hostile text is a text", details(browser)["Value"], HOSTILE)
    check("a hostile sheet is a name", text(browser, "[role=tab] bdi"), "<b>&\"'")
    check("dark paper", browser.ask("getComputedStyle(document.body).backgroundColor"),
          "rgb(20, 24, 31)")
    check("complaints", browser.complaints, [])

with page("empty.html") as browser:
    check("an empty document", text(browser, "#count"), "0 cells")
    check("complaints", browser.complaints, [])

begin = time.monotonic()
with Browser(program) as browser:
    begin = time.monotonic()
    browser.open(os.path.join(folder, "large.html"))
    check("many cells", text(browser, "#count"), "20,000 cells")
    choose(browser, "object", "|p19999")
    check("one of many", text(browser, "#count"), "1 of 20,000 cells")
    print(f"figure: milliseconds until 20000 cells are shown and one is found "
          f"{(time.monotonic() - begin) * 1000:.0f}")
    choose(browser, "object", "")
    check("only what is seen is in the page",
          browser.ask("document.querySelectorAll('.cell').length < 2000"), True)
    check("complaints", browser.complaints, [])

sys.exit(1 if failures else 0)
