"""The clips view: pages, marks, selection, upload."""

import pytest

from tests.web.support.page import eventually

PAGE_SIZE = 30


@pytest.fixture
def clips(page):
    page.load_scene("clips-500")
    page.go_to("Clips")
    eventually(lambda: len(rows(page)) == PAGE_SIZE)
    return page


def rows(page):
    return page.browser.find_elements("css selector", "#clip-table tbody tr")


def numbers(page):
    return page.browser.execute_script(
        "return [...document.querySelectorAll('#clip-table tbody tr')].map((row) => Number(row.dataset.number))")


def name_of(page, number, slot="A"):
    return page.state()["slots"][slot]["clips"][number - 1]["name"]


def turn_to_slot_b(page):
    page.find_all("radio")[1].click()


def try_each(page, selector):
    """Presses what there is of the first rows."""
    for control in page.browser.find_elements("css selector", f"#clip-table tr:nth-child(-n + 3) {selector}"):
        page.click(control)


def uploads(page):
    """The uploads that the camera was told to start: commands and parameters."""
    return [(entry["command"], entry["request"]["Request"]["Params"]) for entry in page.journal()
            if "Upload" in (entry["command"] or "")]


def params(page, *commands):
    return [entry["request"]["Request"]["Params"] for entry in page.journal(*commands)]


def test_pages_through_500_clips(clips):
    page = clips
    eventually(lambda: "Page 1 of 17" in page.text())
    assert numbers(page) == list(range(1, 31))
    page.press("Next page")
    eventually(lambda: numbers(page) == list(range(31, 61)))
    page.press("Last page")
    eventually(lambda: numbers(page) == list(range(481, 501)))
    assert not page.button("Next page").is_enabled()
    page.press("First page")
    eventually(lambda: numbers(page) == list(range(1, 31)))
    assert {"Slot": "A", "StartIndexNo": 481, "ClipNum": 30} in params(page, "GetClipInfo")


def test_a_page_that_is_being_read_shows_as_busy(clips):
    page = clips
    busy = "return document.querySelector('#clip-table').ariaBusy"
    assert page.browser.execute_script(busy) == "false"
    page.fault("slow", command="GetClipInfo", ms=1500, count=1)
    page.press("Next page")
    eventually(lambda: page.browser.execute_script(busy) == "true")
    eventually(lambda: numbers(page)[0] == 31)
    assert page.browser.execute_script(busy) == "false"
    page.fault("disable_error", command="GetClipInfo", count=1)
    page.press("Next page")
    eventually(lambda: page.message() == "Clip list: The camera cannot do this in its present state.")
    eventually(lambda: page.browser.execute_script(busy) == "false")
    assert page.text_of("#clip-caption") == "Slot A: 500 clips"


def test_marks_a_clip_and_clears_it_again(clips):
    page = clips
    name = name_of(page, 2)
    before = page.is_pressed(f"OK mark of {name}")
    for marked in (not before, before):
        page.press(f"OK mark of {name}")
        eventually(lambda: page.is_pressed(f"OK mark of {name}") is marked)
        assert page.state()["slots"]["A"]["clips"][1]["ok_mark"] is marked


def test_the_other_slot(clips):
    page = clips
    turn_to_slot_b(page)
    eventually(lambda: params(page, "GetClipInfo")[-1]["Slot"] == "B")
    count = len(page.state()["slots"]["B"]["clips"])
    eventually(lambda: page.text_of("#clip-caption") == f"Slot B: {count} clips")


def test_the_list_of_the_other_slot_is_read_once(clips):
    page = clips
    turn_to_slot_b(page)
    eventually(lambda: numbers(page) != [] and page.text_of("#clip-caption").startswith("Slot B"))
    position = page.journal_position()
    eventually(lambda: len(page.journal("GetCamStatus", after=position)) >= 3)
    assert [read["Slot"] for read in params(page, "GetClipInfo")].count("B") == 1


def test_a_selected_clip_that_is_gone_when_the_view_is_shown_again_is_not_uploaded(clips):
    page = clips
    page.tick(f"Select {name_of(page, 1)}")
    page.tick(f"Select {name_of(page, 20)}")
    page.go_to("Camera")
    page.set_state(slots={"A": {"clips": 5}})
    position = page.journal_position()
    eventually(lambda: len(page.journal("GetCamStatus", after=position)) >= 2)
    page.go_to("Clips")
    eventually(lambda: numbers(page) == [1, 2, 3, 4, 5])
    page.click(page.browser.find_element("id", "upload-selected"))
    assert eventually(lambda: uploads(page)) == [("SetWebFtp1UploadASelect", {"block0": 1})]


def test_no_clip_of_the_other_slot_is_marked_before_its_list_is_there(clips):
    page = clips
    page.fault("slow", command="GetClipInfo", ms=2500, count=1)
    turn_to_slot_b(page)
    try_each(page, "button")
    page.press(f"OK mark of {name_of(page, 5, 'B')}")
    eventually(lambda: {"Slot": "B", "IndexNo": 5, "OKMark": "Mark"} in params(page, "SetClipInfo"))
    assert len(params(page, "SetClipInfo")) == 1


def test_no_clip_of_the_other_slot_is_uploaded_before_its_list_is_there(clips):
    page = clips
    upload = page.browser.find_element("id", "upload-selected")
    page.tick(f"Select {name_of(page, 1)}")
    page.fault("disable_error", command="GetClipInfo")
    turn_to_slot_b(page)
    eventually(lambda: page.message() == "Clip list: The camera cannot do this in its present state.")
    page.click(upload)
    try_each(page, "input")
    page.press("Select page")
    page.clear_faults()
    page.press("Read again")
    page.tick(f"Select {name_of(page, 5, 'B')}")
    page.click(upload)
    # Bit 4 of the first block.
    assert eventually(lambda: uploads(page)) == [("SetWebFtp1UploadBSelect", {"block0": 16})]


def test_a_selection_over_several_pages_is_uploaded(clips):
    page = clips
    page.tick(f"Select {name_of(page, 1)}")
    page.press("Next page")
    eventually(lambda: numbers(page)[0] == 31)
    page.tick(f"Select {name_of(page, 32)}")
    page.tick(f"Select {name_of(page, 33)}")
    eventually(lambda: page.text_of("#selection-count") == "3 selected")
    page.choose("Server", "FTP 3")
    page.press("Upload 3 selected")
    entry = eventually(lambda: page.journal("SetWebFtp3UploadASelect"))[0]
    # Bit 0 and bit 31 of the first block, bit 0 of the second.
    assert entry["request"]["Request"]["Params"] == {"block0": 2**31 + 1, "block1": 1}
    assert page.state()["upload"]["server"] == "FTP3"
    assert len(page.state()["upload"]["files"]) == 3


def test_selecting_all_500_is_one_request(clips):
    page = clips
    page.press("Select all")
    page.press("Upload 500 selected")
    eventually(lambda: len(page.state()["upload"]["files"]) == 500)
    page.press("Select none")
    eventually(lambda: not page.button("Upload selected").is_enabled())


@pytest.mark.parametrize("answer, phases", [("Yes", True), ("No", False)])
def test_an_upload_asks_its_question(page, answer, phases):
    page.load_scene("upload")
    page.go_to("Clips")
    question = eventually(lambda: page.find("group", "Do you trust the server with this key?"))
    assert page.text_of("#upload-question-text").count(":") >= 15
    assert "The upload asks a question" in page.text_of("#warnings")
    page.press(answer, within=question)
    entry = eventually(lambda: page.journal("WebFtpOperateResponse"))[0]
    assert entry["request"]["Request"]["Params"] == {"Response": int(phases)}
    assert entry["result"] == "Success"
    eventually(lambda: not page.find_all("group", "Do you trust the server with this key?"))


@pytest.mark.parametrize("answer, code", [("Yes", 1), ("No", 0)])
def test_an_upload_asks_before_it_overwrites(page, answer, code):
    page.load_scene("upload")
    page.set_state(upload={"servers": {"FTP2": {"asks_to_overwrite": True}}})
    page.go_to("Clips")
    page.press("Yes", within=eventually(lambda: page.find("group", "Do you trust the server with this key?")))
    question = eventually(lambda: page.find("group", "The camera asks:"))
    assert page.state()["upload"]["phase"] == "PROMPT"
    page.press(answer, within=question)
    eventually(lambda: params(page, "WebFtpOperateResponse") == [{"Response": 1}, {"Response": code}])
    assert page.journal("WebFtpOperateResponse")[-1]["result"] == "Success"


def test_an_upload_shows_its_progress(page):
    page.go_to("Clips")
    page.press("Upload all")
    eventually(lambda: page.find("progressbar", "Upload progress").is_displayed())
    eventually(lambda: "to server 1: file" in page.text_of("#upload-detail"))
    assert not page.button("Upload all").is_enabled()
    assert page.received("SetWebFtpUploadAll") != []


def test_upload_of_marked_clips(page):
    page.go_to("Clips")
    page.press("Upload marked")
    entry = eventually(lambda: page.journal("SetWebFtpUploadOkMarked"))[0]
    assert entry["request"]["Request"]["Params"] == {"Server": 0, "Slot": 0}


@pytest.mark.parametrize("button, command, expected", [
    ("Upload 1 selected", "SetWebFtp1UploadASelect", {"block0": 1}),
    ("Upload marked", "SetWebFtpUploadOkMarked", {"Server": 0, "Slot": 0}),
    ("Upload all", "SetWebFtpUploadAll", {"Server": 0, "Slot": 0}),
])
def test_an_upload_that_waits_is_sent_as_it_was_chosen(page, button, command, expected):
    # The only clip has no mark, so the first upload starts nothing; its reply holds up the next one.
    page.set_state(slots={"A": {"clips": 1}})
    page.go_to("Clips")
    page.tick(f"Select {name_of(page, 1)}")
    page.fault("slow", command="SetWebFtpUploadOkMarked", ms=2500, count=1)
    page.press("Upload marked")
    page.press(button)
    turn_to_slot_b(page)
    page.choose("Server", "FTP 2")
    assert eventually(lambda: uploads(page)[1:]) == [(command, expected)]
