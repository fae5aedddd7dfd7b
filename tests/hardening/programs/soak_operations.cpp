#include "hardening/programs/soak_operations.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <sstream>
#include <string_view>

#include "sv/image.h"
#include "sv/window.h"
#include "zbasic/zbasic.h"

namespace {

using U = ZelCryptoUtils;

std::string g_folder;
std::string g_programFolder;

SV::String svText(Chance& chance, std::size_t mostBytes) {
    return SV::String(chance.text(mostBytes));
}

const unsigned char* bytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// A result of `ZelCryptoUtils`, released.
template <class Byte>
std::string taken(std::pair<Byte*, int> result) {
    if (!result.first) return "failed";
    const std::string text(reinterpret_cast<const char*>(result.first),
                           static_cast<std::size_t>(result.second));
    U::Free(result.first);
    return text;
}

int sizeOf(const std::string& text) { return static_cast<int>(text.size()); }

bool changesTexts(Chance& chance) {
    const SV::String first = svText(chance, 80);
    SV::String text = first;
    text.append(svText(chance, 80)).insert(chance.below(20), "inserted");
    text.replace(chance.below(50), chance.below(20), first);
    text = text.substr(chance.below(10)) + first;
    return std::string_view(text).ends_with(first) && text.Upper().Lower() == text.Lower();
}

bool convertsToUtf8AndBack(Chance& chance) {
    const std::string text = chance.text(60) + "\xE4\xF6\xFC\x80";
    const SV::String utf8 = SV::ConvertStringToUTF8String(SV::String(text));
    return SV::ConvertUTF8StringToString(utf8) == text;
}

bool masks(Chance& chance) {
    const SV::String text = svText(chance, 60);
    const SV::String csv = Zel_MaskCSV(text);
    return Zel_Unmask(Zel_Mask(text.c_str(), 'a', '\\').c_str(), '\\') == text &&
           csv.size() >= text.size();
}

bool splits(Chance& chance) {
    const SV::String text = svText(chance, 60) + ";" + svText(chance, 60);
    ZelVectorSequence<SV::String> tokens;
    Zel_SplitIntoTokens(text, ';', tokens);
    SV::String name = svText(chance, 30);
    Zel_MakeNextName(name);
    return tokens.elements().size() >= 2 && !Zel_EnsureSurroundingParentheses(name).empty();
}

bool writesNumbers(Chance& chance) {
    const double value = static_cast<double>(chance.below(1'000'000)) / 8;
    return zel_atof(zel_ftoa_no_locale(value, 3).c_str()) == value &&
           zel_lexcmp(svText(chance, 9).c_str(), svText(chance, 9).c_str()) < 2;
}

bool exportsText(Chance& chance) {
    const SV::String text = svText(chance, 200) + "<\xE4&>";
    std::ostringstream stream;
    stream << ZelSGMLString(text);
    return stream.str() == std::string_view(ZelSGMLString::GetSGMLString(text)) &&
           ZelSGMLString::XMLStr(text, true).size() > text.size();
}

bool matches(Chance& chance) {
    static constexpr const char* kPatterns[] = {"a+b*", "(a|b|c|d)+ ?[[:digit:]]", "(.)\\1",
                                                "^x.*y", "needle"};
    const ZelRegEx expression(kPatterns[chance.below(std::size(kPatterns))], 2);
    const std::string text = chance.text(200);
    int start = 0, end = 0;
    if (!expression.match(text.c_str(), start, end)) return start == -1;
    return start <= end && end <= sizeOf(text);
}

bool matchesWildcards(Chance& chance) {
    const std::string name = chance.text(20);
    return ZelJokerz("*.txt", 1).match((name + ".TXT").c_str()) == 1;
}

bool codesBase64(Chance& chance) {
    const std::string data = chance.bytes(200);
    const auto size = static_cast<unsigned long>(data.size());
    char *text = nullptr, *back = nullptr;
    unsigned long textSize = 0, backSize = 0;
    Zel_NewBase64Encode(data.data(), size, text, textSize);
    const bool isRead = Zel_NewBase64Decode(text, textSize, back, backSize);
    const bool isSame = isRead && std::string_view(back, backSize) == data;
    delete[] text;
    delete[] back;
    return isSame;
}

bool codesInHelpers(Chance& chance) {
    const std::string data = chance.bytes(200) + "x";
    const std::string digits = taken(U::HexEncode(bytesOf(data), sizeOf(data)));
    const std::string lines = taken(U::Base64Encode(bytesOf(data), sizeOf(data)));
    return taken(U::HexDecode(digits.c_str())) == data &&
           taken(U::Base64Decode(lines.c_str())) == data;
}

bool encrypts(Chance& chance) {
    const std::string key(32, 'k');
    const std::string data = chance.bytes(100) + "x";
    const std::string cipher =
        taken(U::AESEncrypt(bytesOf(data), sizeOf(data), bytesOf(key), 256, bytesOf(key)));
    const std::string back =
        taken(U::AESDecrypt(bytesOf(cipher), sizeOf(cipher), bytesOf(key), 256, bytesOf(key)));
    return back.starts_with(data);
}

bool encryptsByType(Chance& chance) {
    std::string text = chance.text(60) + "x";
    const auto type = static_cast<long>(chance.below(3));
    char *digits = nullptr, *back = nullptr;
    ZelEncryption::Instance().Encrypt(type, text.data(), digits, -1);
    ZelEncryption::Instance().Decrypt(type, digits, back);
    const bool isSame = digits && back && std::string_view(back).starts_with(text);
    U::Free(digits);
    U::Free(back);
    return isSame;
}

bool calculatesTime(Chance& chance) {
    const auto seconds = static_cast<double>(chance.below(1'000'000'000));
    const ZelCoreTime time(seconds);
    return ZelCoreTime(time.asChar()).asDouble() == seconds;
}

bool writesDates(Chance& chance) {
    const auto day = static_cast<int>(chance.below(28)) + 1;
    const auto month = static_cast<int>(chance.below(12)) + 1;
    int back = 0;
    return !ZelDate::GetFormatedDate(SV::Date(day, month, 2024), "DDD, DD. MMM YYYY").empty() &&
           ZelDate::StrToMonth(ZelDate::MonthToStr(month - 1), back) && back == month - 1;
}

bool asksTheLocale(Chance&) {
    return !Locale::Zel_GetDecimalSeparator().empty() && !Locale::Zel_GetLanguageName().empty();
}

bool switchesLanguage(Chance& chance) {
    ZelInternational::SetCurrentLanguageID(chance.below(2) ? 1031 : 1033);
    return !ZelRegEx::fmtErrMsg(REG_EPAREN).empty();
}

bool readsTextsOfLanguages(Chance&) {
    Zel_DeinitializeMultiLanguageStrings();
    Zel_InitializeMultiLanguageStrings();
    return Zel_MultiLangFindResId("no text of theirs") == 0;
}

bool findsTextsOfLanguages(Chance& chance) {
    const SV::String text = svText(chance, 30);
    return Zel_MultiLangFindResId(text) == 0 && !Zel_MultiLangEquals(text, 7) &&
           Zel_MultiLangGet(65000, 1033).empty();
}

bool logs(Chance& chance) {
    static ZelBasicFileLogger log(true, true, 0);
    if (!log.isOpen()) log.open((g_folder + "\\steady.log").c_str(), false);
    return log.addText("%s %d", chance.text(100).c_str(), 1);
}

bool opensLogs(Chance& chance) {
    ZelBasicFileLogger log(false, true, 2);
    return log.open((g_folder + "\\opened.log").c_str(), false) &&
           log.addText("%s", chance.text(2000).c_str()) && log.deleteFromDisc();
}

bool logsByName(Chance& chance) {
    Zel_AddToLog(SV::String(g_folder + "\\named.log"), svText(chance, 100));
    return true;
}

bool traces(Chance& chance) {
    const std::string text = chance.text(60);
    Zel_Trace("%s", text.c_str());
    ZelDebugOut(text.c_str());
    return Zel_MemoryIsString(text.c_str());
}

bool reportsAnError(Chance&) {
    displayErrorMessage("soak.cpp", 1);  // there is no place for a dump
    return true;
}

bool loadsPlugins(Chance& chance) {
    const char* const names[] = {"general.dll", "script44.dll", "no_version.dll"};
    const std::string path =
        g_programFolder + "\\test_plugins\\" + names[chance.below(std::size(names))];
    ZelPluginManager::Instance().LoadSinglePlugin(path.c_str());
    ZelBasicPluginList plugins;
    ZelPluginManager::Instance().GetAllPlugins(plugins, true);
    return plugins.size() <= 1 && ZelPluginManager::Instance().DiscardPlugins();
}

ZelMemBuf echo(const ZelInputData& input) { return ZelMemBuf(input.data, input.size); }

bool callsFar(Chance& chance) {
    ZelFarCallFactory& calls = ZelFarCallFactory::Instance();
    calls.registerReceiver("echo", echo);
    const std::string text = chance.text(100);
    ZelMemBuf answer;
    return calls.call("echo", ZelInputData(std::string_view(text)), answer) &&
           answer.getText() == text;
}

bool completesNames(Chance& chance) {
    ZelExtensionManager extensions("mdl");
    extensions.addExtension(svText(chance, 30));
    SV::String path = svText(chance, 30), drive, folder, name, extension;
    extensions.setExtension(path);
    ZelSystemFileManager::splitFileName(path, drive, folder, name, extension, true);
    return drive + folder + name + extension == path;
}

bool makesTemporaryNames(Chance&) {
    const SV::String name = ZelSystemFileManager::fileCreateTempName("soak", "txt");
    ZelCleanUp::Instance().RemoveFileCleanUpAction(name);
    return !name.empty();
}

bool cachesBlocks(Chance& chance) {
    void* const first = ZelMemCache::General().Alloc(chance.below(2000));
    void* const second = ZelMemCache::General().Alloc(chance.below(2000));
    ZelMemCache::General().Free(first);
    ZelMemCache::General().Free(second);
    return true;
}

bool quotesArguments(Chance& chance) {
    return !Zel_QuoteArgument(svText(chance, 60), chance.below(2) == 0).empty();
}

bool startsPrograms(Chance& chance) {
    const bool isThere = chance.below(20) == 0;
    ZelSynchronousProcess process(isThere ? "cmd" : "missing.exe",
                                  SV::String("/c exit 5 1>" + g_folder + "\\output"), kCmdHide);
    process.SetUseRedirection(true);
    if (!process.Execute(false)) return !isThere;
    long code = -1;
    for (int i = 0; code == -1 && i < 60; ++i) code = process.Wait();
    return code == 5;
}

bool readsTokens(Chance&) {
    static const std::string path = g_folder + "\\tokens.txt";
    static const bool isWritten = [] {
        std::FILE* const file = std::fopen(path.c_str(), "wb");
        for (int i = 0; i < 100; ++i) std::fputs("some words, (marks) and 3.14e+5\r\n", file);
        return std::fclose(file) == 0;
    }();
    ZelTextParser parser(new ZelTextFileReader(SV::String(path)));
    SV::String token;
    int count = 0;
    while (parser.GetNextToken(token)) ++count;
    return isWritten && count == 700;
}

bool readsWholeFiles(Chance&) {
    SV::String content;
    return ZelSystemFileManager::readStringFromFile(
               content, SV::String(g_programFolder + "\\lang.ini"), false) == 0 &&
           ZelSystemFileManager::IsContentOfLastFile(content);
}

bool asksForFiles(Chance&) {
    const std::string path = g_programFolder + "\\lang.ini";
    return Zel_FileExists(path.c_str()) && !Zel_FileIsInUse(path.c_str()) &&
           !ZelDBUserUtils(path.c_str()).GetDBUserName("").size();
}

class Listener : public ZelEventListener {
public:
    Listener() {
        setEventHandler(ZelEvent_User, static_cast<Handler>(&Listener::count), 5);
        setEventHandler(ZelEvent_UserGroup, static_cast<Handler>(&Listener::count), 0);
    }
    void count(ZelEvent*) { ++m_count; }
    int m_count = 0;
};

bool triggersEvents(Chance&) {
    Listener first, second;
    ZelUserEvent(ZelUserEvent::AfterRename, 7).trigger();
    ZelUserGroupEvent(ZelUserGroupEvent::AfterRename, 7).trigger();
    return first.m_count == 2 && second.m_count == 2;
}

bool collectsWork(Chance& chance) {
    const SV::String path = SV::String("x:\\missing\\") + svText(chance, 60);
    ZelCleanUp::Instance().AddFileCleanUpAction(path);
    ZelCleanUp::Instance().AddFileCleanUpAction(path);
    ZelCleanUp::Instance().RemoveFileCleanUpAction(path);
    ZelExitAppEvent(path).trigger();
    return true;
}

bool asksAboutTheProgram(Chance& chance) {
    ZelApplicationInfo::SetValue("key", svText(chance, 60));
    Zel_SetCoreVar(ZelCoreVarType(3), 5);
    return !ZelApplicationInfo::GetInfo().empty() && !Zel_GetPatchBuildVersionString().empty() &&
           !Zel_GetToolName(chance.below(10) == 0).empty();
}

bool draws(Chance& chance) {
    const auto side = static_cast<int>(chance.below(30)) + 1;
    const SV::VirtualDevice device({side, side});
    SV::Image image({side, side});
    image.Draw(device.GetDC(), 0, 0);
    const SV::Bitmap bitmap = device.GetBitmap();
    const SV::Bitmap copy(bitmap);
    ZelThemeManager::Instance().SysThemeChanged();
    return copy.GetSize() == SV::Size{side, side} && device.GetImage().GetSize() == copy.GetSize();
}

bool opensWindows(Chance& chance) {
    SV::MDIFrame frame(svText(chance, 30));
    SV::Menu bar(SV::Menu::Kind::kBar), popup;
    popup.Append(7, "entry");
    bar.Append(std::move(popup), "menu");
    frame.SetMenu(std::move(bar));
    SV::MDIChild first(frame, "first"), second(frame, "second");
    frame.Tile();
    Zel_PushParentWindow(&frame);
    const auto answer = ZelWarningBox(nullptr, ZelMessageBox::kYesNo, "suppressed").Execute();
    Zel_PopParentWindow();
    return frame.GetActiveChild() == &second && answer == ZelMessageBox::kAnswerYes;
}

}  // namespace

std::string Chance::text(std::size_t mostBytes) {
    static constexpr std::string_view kCharacters =
        "abcdefghijklmnopqrstuvwxyz0123456789 abcdefghijklmnopqrstuvwxyz.,;()\"\\";
    std::string text(below(mostBytes + 1), ' ');
    for (char& c : text) c = kCharacters[below(kCharacters.size())];
    return text;
}

std::string Chance::bytes(std::size_t mostBytes) {
    std::string bytes(below(mostBytes + 1), '\0');
    for (char& c : bytes) c = static_cast<char>(below(256));
    return bytes;
}

std::vector<Operation> operationsIn(const std::string& folder, const std::string& programFolder) {
    g_folder = folder;
    g_programFolder = programFolder;
    ZelWholeFileReader::Install();
    return {
        {"texts", 10000, changesTexts},
        {"UTF-8", 5000, convertsToUtf8AndBack},
        {"escapes", 5000, masks},
        {"tokens and names", 5000, splits},
        {"numbers", 5000, writesNumbers},
        {"SGML and XML", 3000, exportsText},
        {"expressions", 2000, matches},
        {"wildcards", 2000, matchesWildcards},
        {"base64", 5000, codesBase64},
        {"hexadecimal digits and lines", 3000, codesInHelpers},
        {"AES", 5000, encrypts},
        {"encryption by type", 5000, encryptsByType},
        {"durations", 5000, calculatesTime},
        {"dates", 5000, writesDates},
        {"the locale", 500, asksTheLocale},
        {"languages", 5, switchesLanguage},
        {"reading texts of languages", 5, readsTextsOfLanguages},
        {"finding them", 3000, findsTextsOfLanguages},
        {"a log", 500, logs},
        {"opening logs", 50, opensLogs},
        {"a log by name", 500, logsByName},
        {"traces", 2000, traces},
        {"internal errors", 2, reportsAnError},
        {"plug-ins", 5, loadsPlugins},
        {"far calls", 5000, callsFar},
        {"extensions and paths", 5000, completesNames},
        {"temporary names", 1000, makesTemporaryNames},
        {"cached blocks", 5000, cachesBlocks},
        {"arguments", 5000, quotesArguments},
        {"programs", 1, startsPrograms},
        {"files of tokens", 100, readsTokens},
        {"whole files", 100, readsWholeFiles},
        {"questions about files", 100, asksForFiles},
        {"events", 5000, triggersEvents},
        {"work at the exit", 2000, collectsWork},
        {"the program", 3000, asksAboutTheProgram},
        {"drawing", 100, draws},
        {"windows", 2, opensWindows},
    };
}
