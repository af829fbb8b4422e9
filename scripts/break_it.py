#!/usr/bin/env python3
"""Breaks the code in many ways, one after the other, and says which of them turn a test red. Run by hand.

    scripts/break_it.py                        # all of them; takes half an hour
    scripts/break_it.py 12 40-45               # some, by number
    scripts/break_it.py platform/linux mods    # some, by the beginning of the file's path
    scripts/break_it.py --list                 # only says what there is, and whether it still fits

It works on a copy of the files as they are now, in build/break_it/, so nothing here is touched. Of each way there is one
line in the list below: a text that its file holds exactly once, what to put in its place, and what is wrong then. One
that no longer fits is said at the end, and so is each that no test saw; three of those are to be looked for by eye. What
is in platform/windows/ only the tests on Windows can see: of those it says only whether they fit.
"""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys

BREAKS = {
    "app/layouts.cpp": [
        ("{3000, 1560, 375, 375}, 7", "{3000, 1560, 375, 375}, 14", "Tab comes to a button in another order"),
        ('"X", "Delete Mod"', '"X", ""', "a button has no tooltip"),
        ("= Initially::Disabled", "= Initially::Enabled", "buttons are in use before the lists are filled"),
        ('.firstFocus = "txtName"', '.firstFocus = "lstDirs"', "a new mod's name has not the focus"),
        ('"Delete", .target = "cmdDeleteMod"', '"Delete", .target = "cmdNewMod"', "a key does something else"),
        ('14, "lstNotActive"', '14, "lstActive"', "the focus goes to another list than a command has filled"),
        (".height = 5295", ".height = 5000", "the main window has another size"),
    ],
    "app/tool.cpp": [
        ("mainWindow.Form_Load();", "", "the program starts with an empty window"),
    ],
    "mods/activation.cpp": [
        ('SetActive(lstNotActive, "1")', 'SetActive(lstNotActive, "0")', "activating does nothing"),
        ("return unsaved ? unsaved : MakeModule();", "return unsaved;", "activating writes no module file"),
        ("list.Count() >= left", "list.Count() > left", "a mod that shares its name is activated for ever"),
        ("n != Module1::kNoMod", "true", "an entry that is gone is written all the same"),
    ],
    "mods/delete_mod.cpp": [
        ("CopyMod(game, n, n - 1)", "CopyMod(game, n, n)", "later mods do not move down"),
        ('"ModCount", count - 1', '"ModCount", count', "a deleted mod still counts"),
        ("answer == platform::Answer::Cancel", "false", "a mod is deleted in spite of Cancel"),
        ("\"Really delete '\"", '"Really delete "', "the question is another"),
        ("if (deleted == Module1::kNoMod) return;", "", "what another program deleted is deleted once more"),
    ],
    "mods/failure_message.cpp": [
        ("platform::Icon::Critical", "platform::Icon::Exclamation", "a failure has another icon"),
        ("if (!failure) return;", "return;", "a failure is not told"),
    ],
    "mods/frmMain.cpp": [
        ('"Active", 0) != 0', '"Active", 0) == 1', "a mod whose Active is 2 is listed as available"),
        ("lstActive.Count() > 1", "lstActive.Count() > 0", "a lone mod can be moved"),
        ('== "-1";', '== "0";', "a first start is not noticed"),
        ("unread ? unread->Sentence() : \"\"", '""', "lists are empty and do not say why"),
        ('return ShowFailure("Gantrel", unread);', "{}", "unreadable settings are a first start"),
        ('if (count <= 0) return "No data folders";', "", "a mod without folders does not say so"),
        ('lines += " (missing)"', 'lines += ""', "a missing folder is not told"),
        ("lstGame_Validate() const { ListMods(); }", "lstGame_Validate() const {}", "lists do not follow the selector"),
    ],
    "mods/frmNew.cpp": [
        ('unique name.", platform::Icon::Information', 'unique name.", platform::Icon::Critical', "a wrong icon"),
        ('"Active", "0"', '"Active", "1"', "a new mod is active"),
        ("DirKey(j++)", "DirKey(j)", "of a new mod's folders one is kept"),
        ("if (!unsaved) return window_.Close();", "return window_.Close();", "what was typed is lost on a failure"),
        ('folder + "W40k"', "folder", "folders are looked for in the wrong place"),
        ("Module1::ModCount(game), 0)", "Module1::ModCount(game), -9)", "a new mod gets a number below 1"),
        ("txtName.TakeFocus();", "", "the focus is not where the user goes on"),
        ('name.find_first_not_of(" \\t") == std::string::npos', "name.empty()", "a name of blanks is taken"),
        ("Module1::FindMod(game, name) != Module1::kNoMod", "false", "a name is taken twice"),
    ],
    "mods/load_order.cpp": [
        ("MoveSelected(-1)", "MoveSelected(+1)", "up is down"),
        ("CopyMod(game, schema::kScratchMod, neighbour)", "CopyMod(game, moved, neighbour)", "a mod is lost in a move"),
        ("unsaved ? position : newPosition", "position", "the selection stays behind"),
        ("position + by", "position + by + by", "the next but one is exchanged"),
    ],
    "mods/mod_section.cpp": [
        ('GetSetting(source, "Active", "0")', 'GetSetting(source, "Active", "1")', "a missing Active is copied as active"),
        ("k <= dirCount", "k < dirCount", "the last folder is not copied"),
    ],
    "installations/frmDoWSetup.cpp": [
        ("if (!folder.ends_with('\\\\')) folder += '\\\\';", "", "a registered folder has no separator at its end"),
        ('PutGame(n, N, folder, "1")', 'PutGame(n, N, folder, "0")', "AutoPath is wrong"),
        ('"Dawn of War Demo", "Dawn of War Beta"', '"Dawn of War Beta", "Dawn of War Demo"', "editions in another order"),
        ("FindGame(name).has_value()", "false", "a game's name is taken twice"),
        ('"Count", count - 1', '"Count", count', "a removed game still counts"),
        ("schema::GameKey(i - 1), ", "schema::GameKey(i), ", "later games do not move down"),
        ("answer == platform::Answer::No", "false", "a game is removed in spite of No"),
        ("done_ = true;\n  Cancel", "Cancel", "the close box does not end the wait"),
        ("mainWindow_->RefreshGames();", "", "OK does not refill the selector"),
        ("!chosen || IsRefused(name)", "!chosen", "a game that was added meanwhile is added again"),
        (".folder = RegisteredFolder(name)", '.folder = ""', "the file dialog opens elsewhere"),
        ("path.size() - chosen->name.size()", "path.size()", "a game's path has the file's name"),
        ("n <= count ? n : FindGame(name)", "n <= count ? n : std::optional(n)", "another game than the one asked for goes"),
    ],
    "installations/go_to_games.cpp": [
        ("window_.TakeOutOfUse();", "", "the main window stays in use behind the setup dialog"),
        ("window_.PutBackIntoUse();", "", "the main window stays out of use after the setup dialog"),
    ],
    "installations/registry_lookup.cpp": [
        ("<< 8 * i", "<< 8 * (3 - i)", "a registry number is read with its bytes in the wrong order"),
        ("type == platform::kRegSz || type == platform::kRegExpandSz", "type == platform::kRegSz", "%-texts are not read"),
        ('if (end == data.end()) return "";', "", "a text without an end is taken"),
        ("std::bit_cast<std::int32_t>(number)", "number", "a negative registry number is large"),
    ],
    "module_file/MakeModule.cpp": [
        ("!= 1) continue", "== 0) continue", "a mod whose Active is 2 is in the module file"),
        ("i = modCount; i >= 1; --i", "i = 1; i <= modCount; ++i", "the load order is the other way round"),
        ('"NextDirNum", 5', '"NextDirNum", 4', "folders count from another number"),
        ("isProgram || unread", "unread", "a program is replaced by the module file"),
        ('std::string_view("Ulvane.ini"), ', "", "the settings are replaced by the module file"),
        ("CopyTemplate(footer, module)", "CopyTemplate(header, module)", "the footer is the header"),
        ("if (file.empty()) return std::nullopt;", "", "no game is a failure"),
        ("unread = Module1::Unread()) return", "unread = Module1::Unread(); false) return", "a game without mods is written"),
    ],
    "module_file/module_text.cpp": [
        ("starts_with(kLineEnd) ? 2 : 1", "starts_with(kLineEnd) ? 1 : 1", "a line end is two in the module file"),
        ('" = "', '"="', "a folder's line is spaced otherwise"),
    ],
    "settings/EZINILib.cpp": [
        (".substr(0, kMostCharacters)", "", "more than 254 characters are read"),
        ("if (isUtf16) unread = platform::FileRefusal::Utf16;", "", "text in UTF-16 is written over"),
        ("if (unread_) return unread_;", "", "a file that cannot be read is replaced"),
        ("if (!std::exchange(isChanged_, false)) return {};", "", "a file is replaced by what it holds already"),
    ],
    "settings/Module1.cpp": [
        ("count && *count <= kMost", "count", "a count of billions is taken at its word"),
        ('"Name", "Unknown") == name', '"Name", "") == name', "a mod without a name is not found"),
        ('"Path", "C:\\\\"', '"Path", ""', "a game without a path is nowhere"),
        ("if (isOutermost_) files.reset();", "files.reset();", "a reading ends with one within it"),
        ("files->settings = EZINILib::WholeINI(SettingsFile());", "", "what could not be saved is shown as if it were"),
        ('IsThere(section, "Name") || ', "", "a mod without Active ends a damaged count"),
        ("files->make ? UnreadOf(*files->make)", "files->make ? UnreadOf(files->settings)", "an unreadable Make.ini is none"),
        ("(GetSetting(section, key, std::to_string(fallback))).value_or(fallback)", "(GetSetting(section, key, {})).value_or(0)",
         "a damaged number is 0"),
    ],
    "settings/file_failure.h": [
        ('reason.message() + "."', "reason.message()", "a sentence has no full stop"),
    ],
    "settings/schema.h": [
        ('return "Dir" +', 'return "Dir_" +', "folders are kept under another key"),
    ],
    "settings/whole_number.cpp": [
        (" && !text.substr(1).starts_with('-')", "", "+-1 is a number"),
        (" || end != text.data() + text.size()", "", "12abc is a number"),
    ],
    "platform/profile_text.cpp": [
        ("while (Trimmed(lines[at - 1].content).empty()) --at;", "", "a new key goes behind the section's blank lines"),
        ("if (lines[at - 1].end.empty()) lines[at - 1].end = lineEnd_;", "", "a new key is joined to an open last line"),
        ("lastLines.back().end = lineEnd_;", "", "a new section is joined to an open last line"),
        ("content.rfind(']')", "content.find(']')", "a section's name ends at its first bracket"),
        ("content.front() == ';' || ", "", "a comment is a key"),
        ("lineEnd_ = LineEndOf(text.substr(LineOf(text).size()));", "", "new lines do not end as the others do"),
        ("if (IsLineBreak(c) || c == '\\0')", "if (c == '\\n')", "a value breaks out of its line"),
        ("value.size() >= 2", "value.size() >= 1", "a lone quote is a pair"),
        ("kByteOrderMark.size() : 0", "0U : 0U", "a byte-order mark hides the first section"),
        ("if (SectionName(line)) TakeApart(Text());", "", "a key that looks like a header is none yet"),
        ("section.keys.emplace(*name, at);", "static_cast<void>(at);", "a new key of a long section is not found"),
        ("isAscii ? c : FoldCase(c)", "isAscii ? c : c", "letters with marks have no cases in a section's name"),
        ("OnOneLine(Trimmed(key))", "OnOneLine(key)", "a new key is written with the blanks around it"),
    ],
    "platform/code_page.cpp": [
        ("isSurrogatePair ? 2 : 1", "isSurrogatePair ? 1 : 1", "one character is two question marks"),
        ("return left < right;", "return false;", "names that differ in letter case alone have no order"),
    ],
    "platform/files.cpp": [
        ("equivalent(AsSpelledOnDisk(left).text", "equivalent(left.text", "a file is another one in another letter case"),
    ],
    "platform/linux/code_page.cpp": [
        (" && code != 0xF7", "", "the division sign is a small letter"),
        ("0x20AC, 0x0081", "0x20AD, 0x0081", "the euro sign is another character"),
        ("case 0xFF:", "case 0xFD:", "a y with two dots has no capital"),
    ],
    "platform/linux/drives.cpp": [
        ("if (!result && name < spelling) continue;", "if (!result) continue;", "of several spellings, any is taken"),
        ('if (letter == \'c\') return HostPath{prefix->text + "/drive_c"};', "", "without a link there is no drive C:"),
        ("folder.size() <= longest", "longest > 0", "a file is named on the first drive above it"),
        ("text->find('\\\\') == std::string::npos", "true", "a backslash in a name is a separator"),
        ("errno == ENOTDIR ? ENOENT : errno", "errno", "a file in a folder's place is an error"),
        ("if (result && !IsMissing(result)) return result;", "", "what the disk does not tell is missing"),
        ('"/.wine"', '"/.wine32"', "the prefix in the home folder is not found"),
        ("if (path.front() != '/') return std::nullopt;", "", "a folder whose name begins like a drive's is on it"),
        ("return errno == 0 ? result : Result(false);", "return result;", "a folder that is half listed is whole"),
        ("!windowsPath.substr(1).starts_with(':')", "windowsPath.size() < 2", "cx is a drive"),
    ],
    "platform/linux/files.cpp": [
        ("O_WRONLY | O_CREAT | O_EXCL", "O_WRONLY | O_CREAT", "what has the new file's name is written to"),
        ("if (!failure) failure = file.Flush();", "", "a file takes the name before it is on the disk"),
        ("if (failure) unlink(newPath.c_str());", "", "a failed write leaves a file"),
        ("old->st_mode & 07777U", "0600", "a replaced file has other permissions"),
        ("(old.st_mode & kAnyonesWrite) != 0", "(old.st_mode & kAnyonesWrite) != 07777", "root replaces a read-only file"),
        ("const auto restored = Overwrite(file, old.View());", "const auto restored = file.Flush();", "no old bytes again"),
        ("if (const auto late = file.Close(); !failure) failure = late;", "file.Close();", "a late failure is not seen"),
        ("if (count > most_) return FileRefusal::TooLarge;", "", "a file that is too large is cut"),
        ("failure == std::errc::no_lock_available ||", "", "a disk without locks takes no files"),
        ("refusal = CheckMayBeFollowed(path, status)) return", "refusal = CheckMayBeFollowed(path, status); false) return",
         "another user's link is followed"),
        ("OnlyTheFolderRefused(failure)", "OnlyTheFolderRefused({})", "a folder that takes no new file takes no change"),
        ("count < 0 && errno != EINTR", "count < 0", "an interrupted write is a failure"),
        ("if (!isThere && errno != ENOENT) return LastError();", "", "what could not be told is taken for missing"),
        ("LOCK_EX | LOCK_NB", "LOCK_SH | LOCK_NB", "two programs write the same new file"),
        ("if (!S_ISREG(status.st_mode)) return FileRefusal::NotOrdinary;", "", "a pipe is a file"),
        ("target.starts_with('/') ? target :", "", "a link with a whole path leads elsewhere"),
        ("ftruncate(file.Descriptor(), static_cast<off_t>(bytes.size())) != 0", "fsync(file.Descriptor()) != 0",
         "the end of a longer file stays"),
    ],
    "platform/linux/launchers.cpp": [
        ('"steamapps/compatdata/*"', '"steamapps/compatdata/0"', "the game is not found in Steam's prefixes"),
        ("addNamedIn(kLutris);", "", "nor in those of Lutris"),
        ('if (text.starts_with("~/")) text.replace(0, 1, HomeFolder());', "", "a path from the home folder on is none"),
        (".second) folders_", ".second || true) folders_", "a prefix of two names is two"),
        ("if (std::string_view(R\"(*?[]{},~\\)\").find(c) != std::string_view::npos) whole += '\\\\';", "",
         "a folder with a bracket in its name is not searched"),
    ],
    "platform/linux/paths.cpp": [
        ("entry->d_name[0] == '.' ||", "", "hidden folders are offered"),
        ("std::ranges::sort(names, ComesBefore);", "std::ranges::sort(names);", "capitals come before all small letters"),
        ("path.text.end(), '\\\\', '/')", "path.text.end(), '/', '/')", "a backslash in a template's name is a part of it"),
        ("if (errno != 0) return std::nullopt;", "", "a folder that is half listed is whole"),
    ],
    "platform/linux/quit_requests.cpp": [
        ("{SIGTERM, SIGINT, SIGHUP}", "{SIGINT, SIGHUP}", "the end of the session kills the program"),
    ],
    "platform/linux/registry.cpp": [
        ("if (path) data = *path", "if (!path) data = *path", "a path of another prefix is given on its drives"),
        ("if (!lines) continue;", "if (!lines) break;", "the first prefix alone is asked"),
        ("if (*size > room) return kErrorMoreData;", "", "a long value is written beyond its room"),
        ("root != kHkeyLocalMachine", "false", "any root is the local machine's"),
    ],
    "platform/linux/registry_text.cpp": [
        ("ToUnit(bytes[i]) | ToUnit(bytes[i + 1]) << 8U", "ToUnit(bytes[i + 1]) | ToUnit(bytes[i]) << 8U",
         "text in bytes is read with them in the wrong order"),
        ("*number >> shift", "*number >> (24 - shift)", "a number's bytes are in the wrong order"),
        ('if (line == "\\\\") line = TakeLine(linesBelow);', "", "bytes do not go on in the next line"),
        ("is64Bit ? In32BitView", "!is64Bit ? In32BitView", "the registry's other view is read"),
        ("kNode)) return std::string(keyName);", "kNode)) return In32BitView({});", "the 32-bit view is entered twice"),
        ("unit != wanted && Folded(unit) != Folded(wanted)", "unit != wanted", "a key's name has letter case"),
        ("TakeNumber(line, 8, 1, 3)", "TakeNumber(line, 8, 1, 4)", "an octal number has four digits"),
        ("text[bracket - 1] != '\\n'", "text[bracket - 1] == '\\\\'", "a bracket inside a line begins a key"),
        ('"abtnvfr"', '"abtnfvr"', "an escape is another character"),
        ("TakeNumber(line, 16, 8, 8)", "TakeNumber(line, 16, 7, 8)", "a number of seven digits is one"),
        ("if (line != \"\\\"\") return std::nullopt;", "", "a text that is not closed is one"),
    ],
    "platform/linux/utf8.cpp": [
        ("code < 0x800;", "false;", "a slash in three bytes is a slash"),
        ("length == 0 || length == 4 ||", "length == 0 ||", "a character of four bytes is another one"),
        ("0xE0U | code >> 12U", "0xE0U | code >> 13U", "the euro sign is misspelt in UTF-8"),
    ],
    "platform/qt/application.cpp": [
        (" && running->isInMainLoop) Quit();", ") Quit();", "the program ends with the first setup dialog"),
        ("while (!isDone() && !IsQuitting())", "while (!isDone())", "the program cannot be ended from the setup dialog"),
        ("QEventLoop::WaitForMoreEvents", "QEventLoop::AllEvents", "the setup dialog's wait keeps the processor busy"),
        ("QEventLoop::ExcludeUserInputEvents", "QEventLoop::AllEvents", "clicks act in the middle of a command, by eye"),
        ("IsDroppingInput() && IsPressed(*event)", "false", "what is pressed while a command runs acts after it"),
        (" || IsHeldDown(*event)", "", "a key that is held down clicks again and again"),
    ],
    "platform/qt/controls.cpp": [
        ("next != nullptr && next != this && next->window() == window()", "next != this", "leaving the program validates"),
        ("if (dynamic_cast<NativeDropDownList*>(native->window()->focusWidget()) != nullptr) native->setFocus();", "",
         "a key acts before the lists follow the selector"),
        ("if (hasFocus()) {", "if (!hasFocus()) {", "the wheel chooses a game without the focus"),
        ("option->state |= QStyle::State_Active;", "", "a selected row is pale without the focus, by eye"),
        ("Select(int position) const { native_->setCurrentRow(position); }", "Select(int) const {}", "nothing is selected"),
        ("if (native_->item(i)->isSelected()) ", "", "all folders are a new mod's"),
        ("const { native_->ShowNow(); }", "const {}", "a long command shows nothing of its work, by eye"),
        ("(FromUtf16Exactly(one.toStdU16String()) ? kept : leftOut)", "kept", "what no file can spell is typed as it is"),
        ("native_->fills != nullptr) native_->fills->setFocus();", "false) {}", "the focus goes with a button that is disabled"),
        ("isArrow && selectionMode() == SingleSelection", "false", "an arrow passes over the entry where nothing is selected"),
        ("std::min(place, newCount - 1)", "0", "a list forgets where the user was in it"),
    ],
    "platform/qt/dialogs.cpp": [
        ("box.setTextFormat(Qt::PlainText);", "", "a mod's name is markup"),
        ("box.setEscapeButton(QMessageBox::No);", "", "a question's close box does not answer"),
        ("folderLength <= settings.longestFolder", "folderLength > 0", "a folder that cannot be kept is taken"),
        ("dialog->selectFile(", "static_cast<void>(", "the file dialog offers no file"),
        ("== QDialog::Accepted ? FromQt(dialog.textValue())", ">= 0 ? FromQt(dialog.textValue())", "Cancel gives the text"),
    ],
    "platform/qt/fonts.cpp": [
        ("present.contains(comic) ? ", "!present.contains(comic) ? ", "the tool's own font is not taken"),
        ("layout.points * kPixelsPerPoint", "layout.points", "text is smaller than its controls"),
    ],
    "platform/qt/window.cpp": [
        ("bool cancel = !isInUse_ ||", "bool cancel =", "the main window closes behind the setup dialog"),
        ("kTwipsPerPixel = 15", "kTwipsPerPixel = 20", "everything is smaller"),
        ("std::ranges::sort(stops, {}, &ControlLayout::tabOrder);", "", "Tab goes in the order of the table"),
        ("widget->setToolTip(ToQt(control.tooltip));", "", "no button has a tooltip"),
        ("control.spokenName.empty() ? words : control.spokenName", "words", "controls without a caption have no spoken name"),
        ("setFixedSize(Pixels(layout.width), ", "resize(Pixels(layout.width), ", "windows can be resized"),
        ("defaultButton_ = qobject_cast<QPushButton*>(widget);", "{}", "Enter is not OK"),
        ("list->selectedItems().isEmpty()", "false", "Enter in a list acts although nothing is selected"),
        ("  KeepClearOfOthers();", "", "a window hides another of its kind"),
        ("inFront_->activateWindow();", "", "a click on the main window does not bring the setup dialog"),
        ("QMetaObject::invokeMethod(qApp, onClosed, Qt::QueuedConnection)", "static_cast<void>(0)", "closed windows stay"),
    ],
    "platform/windows/code_page.cpp": [
        ("if (ToUtf16(text) != wide) return std::nullopt;", "", "a Z with a dot is a plain Z"),
    ],
    "platform/windows/files.cpp": [
        ("if (failure == ERROR_SUCCESS) failure = file->Flush();", "", "a file takes the name before it is on the disk"),
        ("if (failure != ERROR_SUCCESS) Remove(*file);", "", "a failed write leaves a file"),
        ("const DWORD restored = Overwrite(file, old.View());", "const DWORD restored = 0;", "no old bytes again"),
        ("AccessRights(target)};", "{}};", "a replaced file has other access rights"),
        ("patience > 0 && isMomentary(code)", "patience > 9000", "a file that is held for a moment is not waited for"),
    ],
    "platform/windows/paths.cpp": [
        ("path.insert(2, 1, L'\\\\');", "{}", "C:x is in the drive's current folder"),
        ("FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN;", "FILE_ATTRIBUTE_DIRECTORY;", "hidden folders are offered"),
        ("if (!whole.starts_with(kShare)) return whole.insert(0, kLiteral);", "return whole;", "no long paths"),
    ],
    "platform/windows/registry.cpp": [
        ("access | KEY_WOW64_32KEY", "access | KEY_WOW64_64KEY", "the registry's other view is read"),
    ],
}

HERE = pathlib.Path(__file__).resolve().parent.parent
COPY = HERE / "build" / "break_it"
BUILD = ["cmake", "--build", "build/debug", "--target"]
# In the order in which they see a break soonest; what is built from these folders, only the windows' tests see.
PROGRAMS = ["core_tests", "replacing_tests", "fuzz_replay_tests", "window_tests", "fault_tests"]
FOLDERS_OF_WINDOWS = ("app/", "mods/", "platform/qt/")
OTHER_TESTS = ["ctest", "--test-dir", "build/debug", "--tests-regex", "^[a-z_]+$"]  # of no program
PATIENCE = 150  # seconds


def run(command):
    """Whether the command succeeded, and its output. One that does not come to an end fails."""
    process = subprocess.Popen(command, cwd=COPY, text=True, errors="replace", start_new_session=True,
                               env=os.environ | {"QT_QPA_PLATFORM": "offscreen", "QT_LOGGING_RULES": "*.debug=false"},
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    try:
        output = process.communicate(timeout=PATIENCE if "tests" in command[0] else None)[0]
        return process.returncode == 0, output
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        return False, process.communicate()[0] + "\n[  FAILED  ] it does not come to an end\n"


def test(program):
    return [f"build/debug/tests/{program}", "--gtest_fail_fast", "--gtest_brief=1"]


def must(command):
    has_succeeded, output = run(command)
    if not has_succeeded:
        sys.exit(f"{output}\nWithout any break, this did not succeed: {' '.join(command)}")


def make_copy():
    """The files as they are now. Those that did not change keep their time, so that little is built anew."""
    listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=HERE, text=True,
                            check=True, capture_output=True).stdout.split("\n")
    files = {name for name in listed if name and (HERE / name).is_file()}
    for path in [path for path in COPY.rglob("*") if path.is_file()]:
        name = str(path.relative_to(COPY))
        if not name.startswith("build/") and name not in files:
            path.unlink()
    for name in files:
        target = COPY / name
        if target.exists() and target.read_bytes() == (HERE / name).read_bytes():
            continue
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(HERE / name, target)
        shutil.copymode(HERE / name, target)
    # Without what only a debugger needs, which takes most of the linker's time, and without a word on what is left unused.
    must(["cmake", "--preset", "debug", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST", "-DCMAKE_CXX_FLAGS_DEBUG=",
           "-DCMAKE_CXX_FLAGS=-D_GLIBCXX_ASSERTIONS -w"])


def try_break(file, find, replacement):
    path = COPY / file
    whole = path.read_text(encoding="utf-8")
    path.write_text(whole.replace(find, replacement), encoding="utf-8")
    try:
        programs = PROGRAMS
        if file.startswith(FOLDERS_OF_WINDOWS):
            programs = sorted(PROGRAMS, key=lambda program: program != "window_tests")
        for program in programs:
            is_built, output = run([*BUILD, program])
            if not is_built:
                reasons = re.findall(r"error: .*", output)
                return "DOES NOT BUILD", reasons[0] if reasons else output[-300:]
            is_green, output = run(test(program))
            if not is_green:
                first = re.search(r"\[  FAILED  \] ([^,\n(]+[^,\n( ])", output)
                return "red", first[1] if first else f"{program} ends: {output[-100:]!r}"
        run([*BUILD, "all"])
        is_green, output = run(OTHER_TESTS)
        return ("SURVIVES", "") if is_green else ("red", "a test of no program")
    finally:
        path.write_text(whole, encoding="utf-8")


def is_chosen(number, file, choices):
    def fits(choice):
        numbers = re.fullmatch(r"(\d+)(?:-(\d+))?", choice)
        if numbers:
            return int(numbers[1]) <= number <= int(numbers[2] or numbers[1])
        return file.startswith(choice)
    return not choices or any(fits(choice) for choice in choices)


def main():
    choices = sys.argv[1:]
    if "--help" in choices or "-h" in choices:
        sys.exit(__doc__)
    only_list = "--list" in choices
    choices = [choice for choice in choices if choice != "--list"]
    rows = [(file, *row) for file, of_file in BREAKS.items() for row in of_file]
    rows = [(i, *row) for i, row in enumerate(rows, 1) if is_chosen(i, row[0], choices)]
    if not only_list:
        make_copy()
        must([*BUILD, "all"])
        for command in [*map(test, PROGRAMS), OTHER_TESTS]:
            must(command)
    found = {}
    for number, file, find, replacement, what in rows:
        path = HERE / file
        count = path.read_text(encoding="utf-8").count(find) if path.exists() else 0
        if count != 1:
            result, note = "DOES NOT FIT", f"there {count} times: {find}"
        elif file.startswith("platform/windows/"):
            result, note = "not run here", ""
        elif only_list:
            result, note = "fits", ""
        else:
            result, note = try_break(file, find, replacement)
        line = f"{number:3}  {result:14} {file}: {what}" + (f"  [{note}]" if note else "")
        print(line, flush=True)
        found.setdefault(result, []).append(line)
    print("\nIn all: " + ", ".join(f"{len(lines)} {result}" for result, lines in found.items()))
    loud = [line for result, lines in found.items() if result.isupper() for line in lines]
    if loud:
        print("\n".join(["", "To be looked at:", *loud]))
    sys.exit(1 if loud else 0)


if __name__ == "__main__":
    main()
