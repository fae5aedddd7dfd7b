#include "zbasic/zinter.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/program_copy.h"
#include "sv/application.h"
#include "sv/path.h"
#include "zbasic/zcmdline.h"

#include <windows.h>

using Inter = ZelInternational;

namespace {

void show(const SV::String& text) { std::printf("%s\n", text.c_str()); }
void show(long number) { std::printf("%ld\n", number); }
void show(const SV::ResMgr* manager) {
    show(manager ? manager->GetFileName() : SV::String("none"));
}

void showButtons() {
    const SV::International& texts = SV::GetpApp()->GetAppInternational();
    show(texts.GetOKText() + " " + texts.GetCancelText() + " " + texts.GetHelpText());
}

bool g_areButtonsWatched = false;

class Program : public SV::Application {
public:
    bool Exception(long code, unsigned long detail) override {
        const auto* name = reinterpret_cast<const char*>(static_cast<std::uintptr_t>(detail));
        std::printf("exception %ld %s%s\n", code, name,
                    Inter::isLoadingResourceFile() ? "" : " (nobody expects it)");
        if (g_areButtonsWatched) showButtons();
        return true;
    }
};

// What a child does with one of its arguments "name" or "name:value".
const std::map<std::string, std::function<void(const std::string&)>> kSteps = {
    {"init", [](const std::string&) { Inter::InitAvailableLanguages(); }},
    {"list",
     [](const std::string&) {
         for (const auto id : Inter::GetAvailableLanguages()) std::printf("%d ", id);
         std::printf("\n");
     }},
    {"set",
     [](const std::string& id) {
         Inter::SetCurrentLanguageID(static_cast<std::uint16_t>(std::stoi(id)));
     }},
    {"current", [](const std::string&) { show(Inter::GetCurrentLanguageID()); }},
    {"load",
     [](const std::string& base) { show(Inter::createResourceManager(base.c_str(), true)); }},
    {"plain",
     [](const std::string& base) { show(Inter::createResourceManager(base.c_str(), false)); }},
    {"text",
     [](const std::string& number) {
         SV::String text;
         const auto* const manager = SV::Resource::GetResManager();
         show(manager && manager->FindString(static_cast<std::uint32_t>(std::stoi(number)), text)
                  ? text
                  : SV::String("none"));
     }},
    {"global", [](const std::string&) { show(SV::Resource::GetResManager()); }},
    {"next",
     [](const std::string&) {
         SV::Resource::SetResManager(Inter::getNextResMgr());
         show(SV::Resource::GetResManager());
     }},
    {"delete", [](const std::string&) { Inter::DeleteResMgrs(); }},
    {"failed", [](const std::string&) { show(Inter::errorLoadingResourceFiles()); }},
    {"buttons", [](const std::string&) { showButtons(); }},
    {"watch", [](const std::string&) { g_areButtonsWatched = true; }},
    {"tool", [](const std::string& name) { Inter::switchHelpObject(name.c_str()); }},
    {"help",
     [](const std::string&) {
         const SV::Help& help = *SV::GetpApp()->GetHelp();
         std::printf("%d ", help.GetMode());
         show(help.GetFileName().substr(SV::GetProgramDirectory().size()));
     }},
};

// A program that suppresses dialogs and has debug output on standard error.
CHILD_MAIN(international) {
    char console[] = "-console";
    char* arguments[] = {argv[0], console, nullptr};
    ZelCmdline::init(2, arguments, false, "");
    Program program;
    SV::Help help;
    program.ChangeHelp(&help);
    SV::Application::SetModalDialogSuppression(true);
    const BoxWatcher watcher(IDOK);
    for (int i = 1; i < argc; ++i) {
        const std::string step = argv[i];
        const std::size_t colon = std::min(step.find(':'), step.size());
        kSteps.at(step.substr(0, colon))(step.substr(std::min(colon + 1, step.size())));
    }
    for (const SeenBox& box : watcher.seen()) {
        std::printf("%s|%s|%zu\n", box.caption.c_str(), box.text.c_str(), box.buttons.size());
    }
    return 0;
}

constexpr const char* kNoFile = nullptr;

const std::string kAdd1033 = "[locale] Adding locale 1033\n";
const std::string kAdd1031 = "[locale] Adding locale 1031\n";

// The report of an internal fault, but for the version behind it.
std::string fault(int line) {
    const std::string number = std::to_string(line);
    return "[dEM] zinter.cpp (" + number + "): zinter-" + number + " ";
}

const std::string kLongLine = ";" + std::string(99, 'x') + "1031\n1033\n";

struct LanguageListCase {
    const char* why;
    const char* file;
    const char* list;
    std::vector<std::string> debug;  // how its lines begin
};

const LanguageListCase kLists[] = {
    {"comment, blank line and two ids",
     "; comment\n\n1033\n1031\n",
     "1033 1031 ",
     {kAdd1033, kAdd1031}},
    {"order of the file, twice the same",
     "1031\n1033\n1031",
     "1031 1033 1031 ",
     {kAdd1031, kAdd1033, kAdd1031}},
    {"lines end as in Windows files", "1033\r\n\r\n1031\r\n", "1033 1031 ", {kAdd1033, kAdd1031}},
    {"white space before", " \t 1033\n\t;1031\n   \n", "1033 ", {kAdd1033}},
    {"what stands behind the number is not read",
     "1033 English\n1031;\n",
     "1033 1031 ",
     {kAdd1033, kAdd1031}},
    {"no number", "0\nGerman\n1031\n", "1031 ", {fault(376), fault(376), kAdd1031}},
    {"not supported by the system",
     "99999\n-1031\n4711\n1033\n",
     "1033 ",
     {fault(377), fault(377), fault(377), kAdd1033}},
    {"empty file", "", "", {}},
    {"no file", kNoFile, "1031 ", {fault(349)}},
    {"a longer line goes on as the next one",
     kLongLine.c_str(),
     "1031 1033 ",
     {kAdd1031, kAdd1033}},
};

}  // namespace

TEST(InterList, IsReadLineByLine) {
    const ProgramCopy program;
    for (const auto& [why, file, list, debug] : kLists) {
        SCOPED_TRACE(why);
        std::filesystem::remove(program.folder().path("lang.ini"));
        if (file) program.folder().write("lang.ini", file);
        const ChildResult result = program.runChild("international", {"init", "init", "list"});
        EXPECT_EQ(result.exitCode, 0u);
        EXPECT_EQ(result.out, std::string(list) + "\n");
        std::string_view rest = result.err;
        for (const std::string& start : debug) {
            EXPECT_TRUE(rest.starts_with(start)) << start << "<>" << rest;
            rest.remove_prefix(std::min(rest.find('\n') + 1, rest.size()));
        }
        EXPECT_EQ(rest, "");
    }
}

struct FilesCase {
    const char* why;
    std::vector<std::string> steps;
    const char* out;
};

// In the program's folder: both languages' texts for "zbasic" (English also beside
// the program), one for "extra" beside the program, a broken file for "broken".
const FilesCase kFiles[] = {
    {"default language before any is set", {"current"}, "1031\n"},
    {"default language: the user's one of the list", {"init", "current"}, "1033\n"},
    {"in the current language",
     {"init", "load:zbasic", "global", "text:25102"},
     "1\nlanguage\\1033\\zbasic18.dll\nMarch\n"},
    {"the language was set before", {"set:1031", "load:zbasic", "text:25102"}, "1\nM\xE4rz\n"},
    {"switched meanwhile",
     {"init", "load:zbasic", "set:1031", "global", "text:25102"},
     "1\nlanguage\\1031\\zbasic18.dll\nM\xE4rz\n"},
    {"switched to the default again",
     {"init", "set:1031", "load:zbasic", "set:0", "text:25102"},
     "1\nMarch\n"},
    {"no file in that language: the one beside the program",
     {"set:1036", "load:zbasic", "global", "text:25102"},
     "exception 1024 language\\1036\\zbasic18.dll\n1\nzbasic18.dll\nMarch\n"},
    {"once beside the program, always there",
     {"set:1036", "load:zbasic", "set:1031", "global"},
     "exception 1024 language\\1036\\zbasic18.dll\n1\n"
     "exception 1024 language\\zbasic18.dll\nzbasic18.dll\n"},
    {"without language",
     {"plain:extra", "global", "set:1031", "global"},
     "1\nlanguage\\extra18.dll\nlanguage\\extra18.dll\n"},
    {"a broken file counts as missing: box, whatever is suppressed",
     {"set:1031", "load:broken", "failed"},
     "exception 1024 language\\1031\\broken18.dll\nexception 1024 broken18.dll\n0\n1\n"
     "Zelkit: error loading resource file|Failed to load the resource file "
     "'language\\1031\\broken18.dll' for the selected language 'Deutsch'.\n"
     "Please change your language selection.|1\n"},
    {"the first one of all is the current one",
     {"set:1031", "load:zbasic", "plain:extra", "global", "next", "next", "next"},
     "1\n1\nlanguage\\1031\\zbasic18.dll\nlanguage\\extra18.dll\nnone\nnone\n"},
    {"a switch keeps the order and makes the first one current",
     {"set:1031", "load:zbasic", "plain:extra", "next", "set:1033", "global", "next"},
     "1\n1\nlanguage\\extra18.dll\nlanguage\\1033\\zbasic18.dll\nlanguage\\extra18.dll\n"},
    {"deleted, then loaded again",
     {"set:1031", "load:zbasic", "delete", "global", "next", "plain:extra", "global", "failed"},
     "1\nnone\nnone\n1\nlanguage\\extra18.dll\n0\n"},
    {"nothing loaded, nothing installed", {"set:1031", "global"}, "none\n"},
    {"buttons speak the new language",
     {"set:1033", "load:zbasic", "buttons", "set:1031", "buttons"},
     "1\nOK Cancel Help\nOK Abbrechen Hilfe\n"},
    {"buttons are set before the files are loaded, too",
     {"set:1031", "load:zbasic", "watch", "set:1036", "buttons"},
     "1\nexception 1024 language\\1036\\zbasic18.dll\nOK Abbrechen Hilfe\nOK Cancel Help\n"},
    {"help in the language's folder",
     {"set:1031", "tool:both", "help"},
     "3 help\\1031\\both.chm\n"},
    {"help beside the program", {"set:1031", "tool:single", "help"}, "3 single.chm\n"},
    {"help follows the language", {"set:1031", "tool:both", "set:1033", "help"}, "3 both.chm\n"},
    {"no help without a tool", {"set:1031", "help"}, "0 \n"},
};

class InterFiles : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        program = new ProgramCopy;
        program->add("lang.ini");
        program->add("language\\1031\\zbasic18.dll");
        program->add("language\\1033\\zbasic18.dll");
        std::filesystem::copy_file(program->folder().path("language\\1031\\zbasic18.dll"),
                                   program->folder().path("language\\extra18.dll"));
        program->folder().write("language\\1031\\broken18.dll", "no library");
        program->folder().write("help\\1031\\both.chm", "");
        program->folder().write("both.chm", "");
    }
    static void TearDownTestSuite() { delete program; }

    static const ProgramCopy* program;
};

const ProgramCopy* InterFiles::program = nullptr;

TEST_F(InterFiles, FollowTheLanguage) {
    for (const auto& [why, steps, out] : kFiles) {
        SCOPED_TRACE(why);
        ChildResult result = program->runChild("international", steps);
        EXPECT_EQ(result.exitCode, 0u);
        EXPECT_EQ(result.out, out);
    }
}

TEST_F(InterFiles, AreAnnounced) {
    const ChildResult result =
        program->runChild("international", {"set:1031", "load:extra", "load:zbasic", "tool:both"});
    const std::string advice = "         Please change your language selection.";
    EXPECT_EQ(result.err,
              "[locale] Changing default language to 1031 (Deutsch)\n"
              "[locale] Loading resource DLL language\\1031\\extra18.dll\n"
              "[locale] Error! Loading fallback resource DLL extra18.dll\n"
              "[locale] Failed to load the resource file 'language\\1031\\extra18.dll' for the "
              "selected language 'Deutsch'.\n" +
                  advice +
                  "[locale] Loading resource DLL language\\1031\\zbasic18.dll\n"
                  "[zel] Using help file '" +
                  program->folder().path("help\\1031\\both.chm") + "'\n");
}

TEST(InterNames, AreBuiltFromBaseAndLanguage) {
    Inter::SetCurrentLanguageID(1033);
    EXPECT_EQ(Inter::buildResDLLName("zbasic", true), "language\\1033\\zbasic18.dll");
    EXPECT_EQ(Inter::buildResDLLName("zbasic", false), "language\\zbasic18.dll");
    EXPECT_EQ(Inter::buildResDLLNameFallback("zbasic"), "zbasic18.dll");
    EXPECT_EQ(Inter::buildResDLLNameFallback(SV::String(300, 'x')).size(), 258u);
}

struct LookupCase {
    std::uint16_t (*find)(const SV::String&);
    const char* text;
    std::uint16_t id;
};

const LookupCase kLookups[] = {
    {Inter::GetLanguageIDOfNativeLanguageName, "Deutsch", 1031},
    {Inter::GetLanguageIDOfNativeLanguageName, "deutsch", 1031},
    {Inter::GetLanguageIDOfNativeLanguageName, "Deutsc", 0},
    {Inter::GetLanguageIDOfNativeLanguageName, "German", 0},
    {Inter::GetLanguageIDOfNativeLanguageName,
     "Fran\xE7"
     "ais",
     0},  // not in the list
    {Inter::GetLanguageIDOfNativeLanguageName, "", 0},
    {Inter::GetLanguageIDOfNativeCountryName, "Deutschland", 1031},
    {Inter::GetLanguageIDOfEnglishLanguageName, "German", 1031},
    {Inter::GetLanguageIDOfEnglishLanguageName, "English", 1033},
    {Inter::GetLanguageIDOfEnglishCountryName, "Germany", 1031},
    {Inter::GetLanguageIDOfISO639, "de", 1031},
    {Inter::GetLanguageIDOfISO639, "en", 1033},
    {Inter::GetLanguageIDOfISO639, "fr", 0},
};

TEST(InterNames, LeadToAvailableLanguages) {
    Inter::InitAvailableLanguages();  // the list beside this program: 1033, 1031
    for (const auto& [find, text, id] : kLookups) {
        SCOPED_TRACE(text);
        EXPECT_EQ(find(text), id);
    }
    EXPECT_TRUE(Inter::IsValidLanguageID(1031));
    EXPECT_FALSE(Inter::IsValidLanguageID(1036));
}

struct AboutCase {
    std::uint16_t id;
    const char* isoId;
    const char* base;
    const char* native;
};

const AboutCase kAbout[] = {
    {1031, "de-DE", "de", "Deutsch"},
    {3079, "de-AT", "de", "Deutsch"},
    {1036, "fr-FR", "fr",
     "fran\xE7"
     "ais"},
    {4711, "", "", ""},
};

TEST(InterNames, TellTheCurrentLanguage) {
    for (const auto& [id, isoId, base, native] : kAbout) {
        SCOPED_TRACE(id);
        Inter::SetCurrentLanguageID(id);
        EXPECT_EQ(Inter::GetCurrentLanguageID(), id);
        EXPECT_EQ(Inter::GetCurrentWindowsLocaleID(), id);
        EXPECT_EQ(Inter::GetCurrentISOID(), isoId);
        EXPECT_EQ(Inter::GetIso639OfBaseLanguage(), base);
        EXPECT_EQ(Inter::GetNativeLanguageName(), native);
    }
    EXPECT_EQ(Inter::GetNativeLanguageName(1033), "English");
}
