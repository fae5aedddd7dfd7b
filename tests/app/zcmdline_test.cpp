#include "zbasic/zcmdline.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "support/box_watcher.h"
#include "support/child.h"
#include "support/temp_dir.h"
#include "sv/application.h"
#include "sv/resource.h"

#include <windows.h>

namespace {

// A command line that stays valid, as that of a program does.
class Line {
public:
    explicit Line(std::vector<std::string> arguments, std::string program = "C:\\p\\prog.exe")
        : m_texts(std::move(arguments)) {
        m_texts.insert(m_texts.begin(), std::move(program));
        for (std::string& text : m_texts) m_argv.push_back(text.data());
    }

    const ZelCmdline& parse(bool withGUI = true, const char* dialogLogOption = "") {
        ZelCmdline::init(static_cast<int>(m_argv.size()), m_argv.data(), withGUI, dialogLogOption);
        return ZelCmdline::Instance();
    }

private:
    std::vector<std::string> m_texts;
    std::vector<char*> m_argv;
};

struct FlagAccessor {
    const char* option;
    bool (ZelCmdline::*get)() const;
};

const FlagAccessor kFlags[] = {
    {"zellogin", &ZelCmdline::zelLogin},
    {"zelscript_typecheck", &ZelCmdline::typeChecksInZelScript},
    {"assert", &ZelCmdline::releaseAssertionsEnabled},
    {"autokick", &ZelCmdline::isAutoKick},
    {"console", &ZelCmdline::dynamicConsole},
    {"libdox", &ZelCmdline::isTamosLibDocuGen},
    {"no_exception_handling", &ZelCmdline::isExceptionHandlingDeactivated},
    {"no_dialogs", &ZelCmdline::modalDialogSuppression},
    {"no_windows", &ZelCmdline::showWindowSuppression},
    {"no_gui", &ZelCmdline::noGUI},
    {"no_login_screen", &ZelCmdline::noLoginScreen},
    {"no_printer_warning", &ZelCmdline::noPrinterWarning},
    {"nobootlogin", &ZelCmdline::noDBBootLogin},
    {"profiling", &ZelCmdline::profiling},
    {"trace", &ZelCmdline::doTracing},
    {"winlogin", &ZelCmdline::trySingleSignOn},
    {"x", &ZelCmdline::executeLoginDlgAnyway},
};

// The options whose accessors say yes.
std::string flagsThatAreSet(const ZelCmdline& line) {
    std::string all;
    for (const auto& [option, get] : kFlags) {
        if ((line.*get)()) all.append(option).append(" ");
    }
    if (line.debugMemDelayFree() || line.debugMemHeapCheck()) all += "debug_mem ";
    return all;
}

}  // namespace

// Flags are never cleared, so each option on its own adds its name to those of the ones before.
CHILD_MAIN(flagsOneByOne) {
    Line nothing({"trace", "-Trace", "-traces", "/ x", "-", "/", "", "--x", "-no", "=x"});
    std::string expected;
    if (flagsThatAreSet(nothing.parse()) != expected) return 1;
    char prefix = '-';
    for (const auto& [option, get] : kFlags) {
        Line line({"ignored", prefix + std::string(option), prefix + std::string(option)});
        expected.append(option).append(" ");
        if (flagsThatAreSet(line.parse()) != expected) {
            std::printf("%s gives %s", option, flagsThatAreSet(ZelCmdline::Instance()).c_str());
            return 2;
        }
        prefix = prefix == '-' ? '/' : '-';
    }
    Line empty({});
    return flagsThatAreSet(empty.parse()) == expected ? 0 : 3;
}

TEST(CommandLine, SetsAFlagByTheWholeOption) {
    const ChildResult result = runChild("flagsOneByOne");
    EXPECT_EQ(result.exitCode, 0UL);
    EXPECT_EQ(result.out, "");
}

CHILD_MAIN(flags) {
    ZelCmdline::init(argc, argv, std::string(argv[1]) == "gui", "log");
    std::printf("%s\n", flagsThatAreSet(ZelCmdline::Instance()).c_str());
    std::printf("%s\n", ZelCmdline::Instance().getModalDialogSuppressionLogfileName().c_str());
    return 0;
}

struct NoUserCase {
    const char* why;
    std::vector<std::string> arguments;
    const char* out;
};

const NoUserCase kNoUser[] = {
    {"without a user",
     {"batch", "-x", "-logC:\\d.txt", "-trace"},
     "no_dialogs no_windows no_gui no_login_screen no_printer_warning trace \nC:\\d.txt\n"},
    {"the option of its own comes first",
     {"batch", "-logX", "-log_no_dialogsC:\\e.txt"},
     "no_dialogs no_windows no_gui no_login_screen no_printer_warning \nC:\\e.txt\n"},
    {"an empty value is none; the other name is a prefix, too",
     {"batch", "-log_no_dialogs", "-logX"},
     "no_dialogs no_windows no_gui no_login_screen no_printer_warning \n_no_dialogs\n"},
    {"neither given",
     {"batch"},
     "no_dialogs no_windows no_gui no_login_screen no_printer_warning \n\n"},
    {"with a user there is no such file", {"gui", "-x", "-logX", "-log_no_dialogsY"}, "x \n\n"},
    {"deliberately without effect",
     {"gui", "-debug_mem_delayfree", "-debug_mem_heapcheck"},
     "\n\n"},
};

TEST(CommandLine, SuppressesDialogsAndWindowsWithoutAUser) {
    for (const auto& [why, arguments, out] : kNoUser) {
        SCOPED_TRACE(why);
        EXPECT_EQ(runChild("flags", arguments).out, out);
    }
}

struct InitCase {
    const char* why;
    std::vector<std::string> arguments;
    bool withGUI;
    const char* dialogLogOption;
    const char* flags;
    const char* logName;
};

const char kWithoutUser[] =
    "no_dialogs no_windows no_gui no_login_screen no_printer_warning trace ";

// One after the other in one process.
const InitCase kInits[] = {
    {"with a user", {"-x", "-trace", "-logA"}, true, "log", "trace x ", ""},
    {"without one: x is cleared, other flags stay", {"-logB"}, false, "log", kWithoutUser, "B"},
    {"again: the name is set anew, by an empty option from the first one",
     {"file", "/first", "-logC"},
     false,
     "",
     kWithoutUser,
     "first"},
    {"with a user again: all of it stays", {"-logD"}, true, "log", kWithoutUser, "first"},
    {"without the option the name goes", {"file"}, false, "log", kWithoutUser, ""},
};

CHILD_MAIN(initAgain) {
    for (const auto& [why, arguments, withGUI, option, flags, logName] : kInits) {
        Line line(arguments);
        std::printf("%s: %s", why, flagsThatAreSet(line.parse(withGUI, option)).c_str());
        std::printf("%s\n", ZelCmdline::Instance().getModalDialogSuppressionLogfileName().c_str());
    }
    return 0;
}

TEST(CommandLine, IsTakenAnewOnTopOfWhatWasSet) {
    std::string expected;
    for (const auto& [why, arguments, withGUI, option, flags, logName] : kInits) {
        expected += std::string(why) + ": " + flags + logName + "\n";
    }
    EXPECT_EQ(runChild("initAgain").out, expected);
}

struct ValueAccessor {
    const char* option;
    SV::String (ZelCmdline::*get)() const;
};

const ValueAccessor kValues[] = {
    {"u", &ZelCmdline::getLoginUserName},
    {"p", &ZelCmdline::getLoginPassword},
    {"d", &ZelCmdline::getLoginDBName},
    {"s", &ZelCmdline::getLoginDBSystem},
    {"f", &ZelCmdline::getFontFace},
    {"trf", &ZelCmdline::getTraceFilename},
    {"toolname", &ZelCmdline::getToolName},
    {"pidfile", &ZelCmdline::getPIDFileName},
    {"wslogfile", &ZelCmdline::getWSLogFileName},
    {"P", &ZelCmdline::getPrinterName},
    {"charset", &ZelCmdline::getUICharSet},
};

TEST(CommandLine, TakesValuesFromBehindTheirNames) {
    for (const auto& [option, get] : kValues) {
        SCOPED_TRACE(option);
        Line nothing({option, "x", ""});
        EXPECT_EQ((nothing.parse().*get)(), "");
        Line value({"first", "/" + std::string(option) + "C:\\a b.txt", "-" + std::string(option)});
        EXPECT_EQ((value.parse().*get)(), "C:\\a b.txt");
    }
}

struct PrefixCase {
    const char* why;
    std::vector<std::string> arguments;
    const char* name;
    bool isThere;
    const char* value;
};

const PrefixCase kPrefixes[] = {
    {"the first match wins", {"-pA", "-port80"}, "p", true, "A"},
    {"a longer option in front of it", {"-port80", "-pA"}, "p", true, "ort80"},
    {"password in front of the PID file", {"-pidfileX", "-pA"}, "p", true, "idfileX"},
    {"password out of a flag", {"-profiling"}, "p", true, "rofiling"},
    {"database out of a flag", {"/debug_mem_delayfree", "-dA"}, "d", true, "ebug_mem_delayfree"},
    {"database out of the other", {"-debug_mem_heapcheck"}, "d", true, "ebug_mem_heapcheck"},
    {"schema version has no rival", {"-vX"}, "v", true, "X"},
    {"tool name and trace file share a letter only", {"-toolnameX"}, "trf", false, ""},
    {"trace file is no flag", {"-trfX"}, "trace", false, ""},
    {"a flag is no trace file", {"-trace"}, "trf", false, ""},
    {"backups in front of the log format",
     {"-wslogbackup3", "-wslogformatlong"},
     "wslog",
     true,
     "backup3"},
    {"upper case is another name", {"-Printer", "-pA"}, "p", true, "A"},
    {"and the other way round", {"-pA", "-PPrinter"}, "P", true, "Printer"},
    {"upper case of the value stays", {"-uAdmin"}, "u", true, "Admin"},
    {"nothing follows", {"-e"}, "e", true, ""},
    {"an empty name matches every option", {"file", "/xyz"}, "", true, "xyz"},
    {"but no argument that is none", {"file", ""}, "", false, ""},
    {"a lone dash is an option", {"-"}, "", true, ""},
    {"a longer name than the option", {"-lan"}, "lang", false, ""},
    {"a null name matches nothing", {"-x", "-"}, nullptr, false, ""},
    {"the name of a positional value", {"lang1031"}, "lang", false, ""},
    {"two dashes are one and a name", {"--lang1031"}, "-lang", true, "1031"},
};

TEST(CommandLine, FindsOptionsByTheirBeginning) {
    for (const auto& [why, arguments, name, isThere, value] : kPrefixes) {
        SCOPED_TRACE(why);
        Line line(arguments);
        EXPECT_EQ(line.parse().isFlag(name), isThere);
        EXPECT_EQ(line.parse().getValue(name), value);
    }
}

TEST(CommandLine, NeverTakesTheProgramPathForAnOption) {
    Line line({"-b"}, "/usr/prog.exe");
    EXPECT_FALSE(line.parse().isFlag("usr"));
    EXPECT_EQ(line.parse().getValue(""), "b");
}

struct NumberCase {
    const char* argument;
    int asInt;
    long asLong;
    double asDouble;
};

const NumberCase kNumbers[] = {
    {"-n17", 17, 17, 17.0},
    {"-n-1.5e1x", -1, -1, -15.0},
    {"-n 3", 3, 3, 3.0},
    {"-nx", 0, 0, 0.0},
    {"-n", 0, 0, 0.0},
    {"-m5", 0, 0, 0.0},
    {"-n2147483647", 2147483647, 2147483647L, 2147483647.0},
};

TEST(CommandLine, ReadsNumbers) {
    for (const auto& [argument, asInt, asLong, asDouble] : kNumbers) {
        SCOPED_TRACE(argument);
        Line line({argument});
        EXPECT_EQ(line.parse().getInt("n"), asInt);
        EXPECT_EQ(line.parse().getLong("n"), asLong);
        EXPECT_EQ(line.parse().getDouble("n"), asDouble);
    }
    Line numbers({"-h12", "-port8080"});
    EXPECT_EQ(numbers.parse().getFontHeight(), 12);
    EXPECT_EQ(numbers.parse().getWSPortNumber(), 8080);
}

TEST(CommandLine, TellsAMissingOptionFromAnEmptyOne) {
    Line nothing({});
    SV::String script = "untouched";
    EXPECT_EQ(nothing.parse().getWSLogFileBackupCount(), -1);
    EXPECT_FALSE(nothing.parse().getStartupZelScript(script));
    EXPECT_EQ(script, "untouched");

    Line bare({"-wslogbackup", "-e"});
    EXPECT_EQ(bare.parse().getWSLogFileBackupCount(), 0);
    EXPECT_TRUE(bare.parse().getStartupZelScript(script));
    EXPECT_EQ(script, "");

    Line given({"-wslogbackup5", "-ea.zs"});
    EXPECT_EQ(given.parse().getWSLogFileBackupCount(), 5);
    EXPECT_TRUE(given.parse().getStartupZelScript(script));
    EXPECT_EQ(script, "a.zs");
}

TEST(CommandLine, KnowsTwoFormatsOfTheWebServiceLog) {
    for (const auto& [argument, format] : std::vector<std::pair<const char*, ZelWSLogFormat>>{
             {"-wslogformatlong", kWSLogFormatLong},
             {"-wslogformatLong", kWSLogFormatNormal},
             {"-wslogformatlonger", kWSLogFormatNormal},
             {"-wslogformat", kWSLogFormatNormal},
             {"long", kWSLogFormatNormal}}) {
        SCOPED_TRACE(argument);
        Line line({argument});
        EXPECT_EQ(line.parse().getWSLogFormat(), format);
    }
}

TEST(CommandLine, HasASchemaVersionInTheWebServiceHostOnly) {
    for (const auto& [program, version] :
         std::vector<std::pair<const char*, const char*>>{{"zwssrv.exe", "X"},
                                                          {"C:\\dir\\ZWSSRV.EXE", "X"},
                                                          {"/dir.exe/ZwsSrv.exe", "X"},
                                                          {"C:zwssrv.exe", "X"},
                                                          {"C:\\dir\\zwssrv", ""},
                                                          {"C:\\dir\\azwssrv.exe", ""},
                                                          {"C:\\zwssrv.exe\\prog.exe", ""},
                                                          {"C:\\zwssrv.exe\\", ""},
                                                          {"", ""}}) {
        SCOPED_TRACE(program);
        Line line({"-vX"}, program);
        EXPECT_EQ(line.parse().getLoginSchemaVersion(), version);
    }
}

TEST(CommandLine, GivesArgumentsByPosition) {
    Line line({"-a", "file name", ""});
    EXPECT_EQ(line.parse().getCount(), 4);
    const char* const expected[] = {"C:\\p\\prog.exe", "-a", "file name", ""};
    for (int i = 0; i < 4; ++i) EXPECT_EQ(line.parse().getParam(i), expected[i]);
    for (const int i : {-1, 4, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(line.parse().getParam(i), "");
    }
}

// Every lookup before the line is there, then a second line.
CHILD_MAIN(misuse) {
    const SV::Application application;
    const SV::ResMgr texts("test_texts.dll");
    const BoxWatcher watcher(IDOK);
    const ZelCmdline& line = ZelCmdline::Instance();
    const bool isEmpty = line.getCount() == 0 && line.getParam(0).empty() && !line.isFlag("c") &&
                         line.getValue("c").empty() && !line.doTracing();
    ZelCmdline::init(argc, argv, true, "");
    ZelCmdline::init(argc, argv, true, "");
    for (const SeenBox& box : watcher.seen()) std::printf("%s\n", box.text.c_str());
    return isEmpty && line.getCount() == argc && line.dynamicConsole() ? 0 : 1;
}

TEST(CommandLine, ReportsUseBeforeItIsThereAndASecondOne) {
    const TempDir directory;
    const std::string noPlaceForDumps = directory.path("missing");
    const ChildResult result = runChild(
        "misuse", {"-console"}, {"", {"TEMP=" + noPlaceForDumps, "TMP=" + noPlaceForDumps}});
    EXPECT_EQ(result.exitCode, 0UL);
    EXPECT_EQ(result.out,
              "Fault zcmdline-179 [1.8.0.230922] (not %s).\n"
              "Fault zcmdline-188 [1.8.0.230922] (not %s).\n"
              "Fault zcmdline-201 [1.8.0.230922] (not %s).\n"
              "Fault zcmdline-228 [1.8.0.230922] (not %s).\n"
              "Fault zcmdline-109 [1.8.0.230922] (not %s).\n");
    EXPECT_EQ(result.err, "[dEM] zcmdline.cpp (109): zcmdline-109 [1.8.0.230922]\n");
}
