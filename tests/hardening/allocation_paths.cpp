#include "hardening/allocation_paths.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <sstream>
#include <string>
#include <utility>

#include "support/temp_dir.h"
#include "zbasic/zbase64.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zcoretime.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdattime.h"
#include "zbasic/zdbuser.h"
#include "zbasic/zevent.h"
#include "zbasic/zextension.h"
#include "zbasic/zfarcall.h"
#include "zbasic/zfileman.h"
#include "zbasic/zmatcher.h"
#include "zbasic/zmemcache.h"
#include "zbasic/zprocess.h"
#include "zbasic/zsequence.h"
#include "zbasic/zsgml.h"
#include "zbasic/ztextparser.h"
#include "zbasic/ztools.h"
#include "zbasic/zversion.h"

namespace {

using U = ZelCryptoUtils;
using Paths = std::vector<AllocationPath>;

constexpr unsigned char kKey[32] = {1, 2, 3};

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// The length, or what failed, and releases the result.
template <class Byte>
void addResult(Answer& answer, std::pair<Byte*, int> result) {
    answer.add(result.first ? "made" : "null").add(result.second);
    U::Free(result.first);
}

template <class Byte>
std::string taken(std::pair<Byte*, int> result) {
    std::string text(reinterpret_cast<char*>(result.first));
    U::Free(result.first);
    return text;
}

const Paths kTexts = {
    {"a text is put together",
     alone([](Answer& answer) {
         SV::String text(kText);
         text.append(kText).insert(3, kText).erase(7, 20);
         const SV::String sum = text + kText + SV::String(60, 'x');
         answer.add(sum.substr(90)).add(sum.Upper());
     }),
     {kThrows}},
    {"a text that cannot grow stays as it was",
     [] {
         return [text = SV::String(kText)](Answer& answer) mutable {
             text.append(60, 'y');
             answer.add(text);
             text.assign(kText);
         };
     },
     {kThrows}},
    {"a long text is enlarged",
     [] {
         return [text = SV::String(600, 'x')](Answer& answer) mutable {
             text.append(1000, 'y');
             text.append(SV::String(2000, 'z'));
             answer.add(text);
         };
     },
     {kThrows}},
    {"escapes",
     alone([](Answer& answer) {
         const SV::String masked = Zel_Mask(kText, 't', '\\');
         answer.add(masked).add(Zel_Unmask(masked.c_str(), '\\'));
         answer.add(Zel_MaskCSV(SV::String(kText) + ";"));
     }),
     {kThrows}},
    {"tokens",
     [] {
         return [tokens = ZelVectorSequence<SV::String>()](Answer& answer) mutable {
             Zel_SplitIntoTokens(SV::String("1 2 3 4 5 6 7 8 9 ") + kText + ";" + kText, "t",
                                 tokens);
             for (const SV::String& token : tokens.elements()) answer.add(token);
         };
     },
     {kThrows}},
    {"names and numbers",
     alone([](Answer& answer) {
         SV::String name = SV::String(kText) + "(2)";
         Zel_MakeNextName(name);
         answer.add(name).add(Zel_EnsureSurroundingParentheses(kText));
         answer.add(zel_ftoa_no_locale(1e40, 5)).add(zel_ftoa_period(1e40, 5));
     }),
     {kThrows}},
    {"error texts",
     alone([](Answer& answer) {
         ZelStringAcceleratorTable::GetGlobal().SetElement(70, kText);
         answer.add(Zel_GetErrorString(ZelErrorCode(6)));
     }),
     {kThrows}},
    {"a character map",
     [] {
         std::string lines = "MAP128\nEnglish and a few other languages\n";
         for (int i = 128; i < 256; ++i) lines += "&with_a_long_name_" + std::to_string(i) + ";\n";
         return [lines](Answer& answer) {
             std::istringstream mapping(lines);
             answer.add(ZelSGMLString::SetCharacterMap(&mapping));
             answer.add(ZelSGMLString::GetSGMLString("a\x80"));
             answer.add(ZelSGMLString::GetLanguage());
         };
     },
     // The stream of the library's user keeps the failure to itself and ends there.
     {kThrows, "0 a&euro; DEFAULT"}},
    {"SGML and XML",
     alone([](Answer& answer) {
         const SV::String text = SV::String(kText) + "<\xE4&\"";
         answer.add(ZelSGMLString::GetSGMLString(text)).add(ZelSGMLString::XMLStr(text, true));
     }),
     {kThrows}},
    {"SGML into a stream",
     [] {
         return [text = ZelSGMLString(SV::String(10'000, '<'))](Answer& answer) {
             std::ostringstream stream;
             stream << text;
             answer.add(stream.good() ? "good" : "bad");
         };
     },
     {kThrows, "bad"}},  // the map is loaded by the first one
};

Step searching(const char* pattern, const char* text) {
    return [expression = ZelRegEx(pattern, 0), text](Answer& answer) {
        int start = 0, end = 0;
        answer.add(expression.regExec(text, start, end, false)).add(start).add(end);
    };
}

Step compiling(const char* pattern) {
    return [pattern](Answer& answer) {
        ZelRegEx expression;
        answer.add(expression.regComp(pattern, 2, false));
        answer.add(!expression ? "none" : "made");
    };
}

const Paths kMatchers = {
    {"an expression is compiled",
     [] { return compiling("^(a|bc|[[:digit:]])+x{2,3}(y|z)*$"); },
     {"12 none"}},
    {"one with back references", [] { return compiling("(a+)x\\1"); }, {"12 none"}},
    {"search by the automaton",
     [] { return searching("(a|bc|dd|e)*f+(g|h)", "xx bcddeffg"); },
     {"12 -1 -1"}},
    {"search by backtracking", [] { return searching("[a-f]+x*y", "-- abcxxy"); }, {"12 -1 -1"}},
    {"search with back references", [] { return searching("(a+)x\\1", "-- aaxaa"); }, {"12 -1 -1"}},
    {"search for segments", [] { return searching("abc.*d.f", "-- abc --- def"); }, {}},
    {"a wildcard",
     alone([](Answer& answer) {
         const ZelJokerz jokerz("*file?_with_a_long_name*", 1);
         answer.add(!jokerz ? "none" : "made").add(jokerz.match("the FILE1_with_a_long_name.txt"));
     }),
     {"none 0"}},
};

// What a coder answers, and whether its output is as it was when it throws.
void code(Answer& answer, bool (*coder)(const char*, unsigned long, char*&, unsigned long&),
          const char* text) {
    char before[] = "before";
    char* out = before;
    unsigned long size = 0;
    try {
        coder(text, static_cast<unsigned long>(std::strlen(text)), out, size);
    } catch (const std::bad_alloc&) {
        answer.add(out == before ? "as it was" : "changed");
        return;
    }
    answer.add(std::string_view(out, size));
    delete[] out;
}

const Paths kBase64 = {
    {"base64 and its text",
     alone([](Answer& answer) { code(answer, Zel_NewBase64Encode, kText); }),
     {"as it was"}},
    {"its bytes",
     alone([](Answer& answer) { code(answer, Zel_NewBase64Decode, "YSB0ZXh0IHRoYXQgaXM="); }),
     {"as it was"}},
};

const Paths kTime = {
    {"the text of a duration",
     alone([](Answer& answer) {
         const ZelCoreTime time(1e18);
         answer.add(time.asString());
         ZelCoreTime sum = time + ZelCoreTime("00:001:02:03:04", "365", "24");
         sum += "00:001:02:03:04";
         answer.add(sum.asChar());
     }),
     {kThrows}},
    {"a date by a picture",
     alone([](Answer& answer) {
         const SV::String picture = "DDD, DD. MMM YYYY, that is YY-MM-DD";
         answer.add(ZelDate::GetFormatedDate(SV::Date(7, 3, 2024), picture));
         answer.add(ZelDate::GetFormatedTime(SV::Time(7, 3, 20), "HH hours, MM minutes, SS"));
     }),
     {kThrows}},
    {"names of months",
     alone([](Answer& answer) {
         int month = 0;
         SV::String name;
         answer.add(ZelDate::StrToMonth("September", month)).add(month);
         answer.add(ZelDate::WeekdayToStr(2, name)).add(name).add(ZelDate::GetMaximumMonthLength());
     }),
     {kThrows}},
};

// The text that a host has to decipher, made while there is memory.
Step deciphering(std::pair<char*, int> (*decipher)(const char*)) {
    return [decipher, digits = taken(U::AESEncrypt(kText))](Answer& answer) {
        addResult(answer, decipher(digits.c_str()));
    };
}

void encryptByType(Answer& answer, long type) {
    char text[] = "a text that is to be encrypted";
    char* out = nullptr;
    const long size = ZelEncryption::Instance().Encrypt(type, text, out, -1);
    addResult(answer, std::pair(out, static_cast<int>(size)));
}

void decryptByType(Answer& answer, long type) {
    char digits[] = "00112233445566778899AABBCCDDEEFF";
    char* out = nullptr;
    const long size = ZelEncryption::Instance().Decrypt(type, digits, out);
    addResult(answer, std::pair(out, static_cast<int>(size)));
}

const char kFailed[] = "null -1";

const Paths kEncryption = {
    {"hexadecimal digits",
     alone([](Answer& answer) { addResult(answer, U::HexEncode(bytes(kText), 40)); }),
     {kFailed}},
    {"their bytes",
     alone([](Answer& answer) { addResult(answer, U::HexDecode("00FF0a")); }),
     {kFailed}},
    {"base64 in lines",
     alone([](Answer& answer) { addResult(answer, U::Base64Encode(bytes(kText), 50)); }),
     {kFailed}},
    {"its bytes",
     alone([](Answer& answer) { addResult(answer, U::Base64Decode("TWFu\n")); }),
     {kFailed}},
    {"bytes of what the filter reads",
     alone([](Answer& answer) { addResult(answer, U::Base64Decode("TWFu TWFu\nTWFu\n")); }),
     {kFailed},
     true,  // libcrypto notes its failures
     true},
    {"CBC",
     alone([](Answer& answer) {
         addResult(answer, U::AESEncrypt(bytes(kText), 44, kKey, 256, kKey));
     }),
     {kFailed}},
    {"the reverse",
     alone([](Answer& answer) {
         addResult(answer, U::AESDecrypt(bytes(kText), 44, kKey, 128, kKey));
     }),
     {kFailed}},
    {"a block",
     alone([](Answer& answer) { addResult(answer, U::AESEncrypt(bytes(kText), 16, kKey, 24)); }),
     {kFailed}},
    {"the reverse",
     alone([](Answer& answer) { addResult(answer, U::AESDecrypt(bytes(kText), 40, kKey, 32)); }),
     {kFailed}},
    {"a text", alone([](Answer& answer) { addResult(answer, U::AESEncrypt(kText)); }), {kFailed}},
    {"the reverse", [] { return deciphering(U::AESDecrypt); }, {kFailed}},
    {"by the first type", alone([](Answer& answer) { encryptByType(answer, 0); }), {kFailed}},
    {"by a later one", alone([](Answer& answer) { encryptByType(answer, 2); }), {kFailed}},
    {"the reverse", alone([](Answer& answer) { decryptByType(answer, 0); }), {kFailed}},
    {"the reverse of a later one",
     alone([](Answer& answer) { decryptByType(answer, 2); }),
     {kFailed}},
    {"a password for an application",
     alone([](Answer& answer) {
         const SV::String key(reinterpret_cast<const char*>(kKey), 32);
         const SV::String password = Zel_DecryptPasswordForAPP("ABEiM0RVZneImaq7zN3u/w==", key);
         answer.add(password.empty() ? "empty" : "there");
     }),
     {kThrows, "empty"}},
    {"a user's file",
     [] {
         const auto folder = std::make_shared<TempDir>();
         const std::string digits = taken(U::AESEncrypt("first\na user with a long name, too\n-"));
         return [folder, path = folder->write("user", digits)](Answer& answer) {
             ZelDBUserUtils user(path.c_str());
             answer.add(user.IsExternalDefined()).add(user.GetDBUserName(""));
         };
     },
     {kThrows, "1 "}},
};

class Lines : public ZelLineReader {
public:
    bool Init() override { return true; }
    bool Done() override { return true; }
    bool GetLine(SV::String& line) override {
        if (m_count++ == 3) return false;
        line = SV::String(kText) + "\n";
        return true;
    }
    std::int64_t GetCurrentOffset() const override { return m_count; }
    bool Is2CharsForNewline() const override { return false; }

private:
    int m_count = 0;
};

void readTokens(Answer& answer, ZelLineReader* reader) {
    ZelTextParser parser(reader);
    SV::String token;
    while (parser.IsNext('a') && parser.GetNextToken(token)) answer.add(token);
    parser.GetUntil('j', token, true, '\\');
    answer.add(token);
    parser.SkipUntil('(', true);
    while (parser.GetNextToken(token)) answer.add(token);
}

const std::string kLines = std::string(kText) + "\r\n\r\n (" + kText + "_" + kText;

const Paths kFiles = {
    {"a file's tokens",
     [] {
         return withFile(kLines, [](Answer& answer, const SV::String& path) {
             readTokens(answer, new ZelTextFileReader(path));
         });
     },
     {kThrows}},
    {"a reader's tokens", alone([](Answer& answer) { readTokens(answer, new Lines); }), {kThrows}},
    {"parts of paths",
     alone([](Answer& answer) {
         SV::String drive, folder, name, extension;
         ZelSystemFileManager::splitFileName(
             "\\\\a_server_with_a_long_name\\share\\a folder with a long name\\file.txt", drive,
             folder, name, extension, true);
         answer.add(drive).add(folder).add(name).add(extension);
         const SV::String path = Zel_GetProgramPathFilename("a file with a long name.txt");
         answer.add(path.substr(path.size() - 27));
     }),
     {kThrows}},
    {"arguments",
     alone([](Answer& answer) {
         answer.add(Zel_QuoteArgument("an argument \"with\" 1>x and % in it", true));
     }),
     {kThrows}},
    {"a cache of blocks",
     alone([](Answer& answer) {
         ZelMemCache cache;
         void* const block = cache.Alloc(100);
         answer.add(block ? "made" : "null");
         if (block) cache.Free(block);
     }),
     {"null"}},
};

class Counting : public ZelEventListener {
public:
    Counting() {
        for (const auto type : {ZelEvent_AppExit, ZelEventType(12345), ZelEvent_AppExit}) {
            setEventHandler(type, static_cast<Handler>(&Counting::count), 0);
        }
    }
    void count(ZelEvent*) { ++m_count; }
    int m_count = 0;
};

class CustomEvent : public ZelEvent {
public:
    CustomEvent() : ZelEvent(ZelEventType(12345)) {}
};

class CountedAction : public ZelCleanUpAction {
public:
    explicit CountedAction(int& count) : m_count(count) { ++m_count; }
    ~CountedAction() override { --m_count; }
    bool execute() override { return true; }

private:
    int& m_count;
};

const Paths kEvents = {
    {"an event",
     alone([](Answer& answer) {
         const Counting listener;
         CustomEvent().trigger();
         answer.add(listener.m_count);
     }),
     {kThrows}},
    {"work at the exit that is added and done",
     alone([](Answer& answer) {
         static int count = 0;
         try {
             ZelCleanUp::Instance().AddAction(new CountedAction(count));
         } catch (const std::bad_alloc&) {
         }
         ZelExitAppEvent("").trigger();
         answer.add(count);
     }),
     {}},
    {"a file to be deleted that is taken back",
     alone([](Answer& answer) {
         const SV::String path = "x:\\a file that is to be deleted at the end.txt";
         ZelCleanUp& collector = ZelCleanUp::Instance();
         try {
             collector.AddFileCleanUpAction(path);
         } catch (const std::bad_alloc&) {
             collector.RemoveFileCleanUpAction(path);
             answer.add("not added");
             return;
         }
         collector.RemoveFileCleanUpAction(path);
         answer.add("added");
     }),
     {kThrows, "not added"}},
    {"extensions",
     alone([](Answer& answer) {
         ZelExtensionManager extensions("an_extension_with_a_long_name");
         extensions.addExtension("another_one_with_a_long_name");
         const ZelExtensionManager copy(extensions);
         SV::String path = "file", base, extension;
         copy.setExtension(path);
         ZelExtensionManager::parsePath(path, base, extension);
         answer.add(path).add(base).add(extension).add(copy.getPath(path));
     }),
     {kThrows}},
    {"their look-up",
     [] {
         return [extensions = ZelExtensionManager("txt")](Answer& answer) {
             SV::String path = "short.TXT";
             extensions.setExtension(path);
             answer.add(path);
         };
     },
     {}},
    {"a far call",
     alone([](Answer& answer) {
         const auto echo = [](const ZelInputData& input) {
             return ZelMemBuf(input.data, input.size);
         };
         ZelFarCallFactory::Instance().registerReceiver("echo of the sweep's far call", echo);
         ZelMemBuf output;
         ZelFarCallFactory::Instance().call("echo of the sweep's far call",
                                            ZelInputData(std::string_view(kText)), output);
         answer.add(output.getText());
     }),
     {kThrows}},
    {"what the program tells of itself",
     alone([](Answer& answer) {
         ZelApplicationInfo::SetValue("a key that has a long name", kText);
         answer.add(ZelApplicationInfo::GetInfo()).add(Zel_GetVersionString());
     }),
     {kThrows}},
};

}  // namespace

Answer& Answer::add(std::string_view text) {
    if (m_size > 0 && m_size < sizeof m_text) m_text[m_size++] = ' ';
    m_size += text.copy(m_text + m_size, sizeof m_text - m_size);
    return *this;
}

Answer& Answer::add(long number) {
    char digits[20];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return add(std::string_view(digits, end));
}

void Answer::replace(std::string_view text) {
    m_size = 0;
    add(text);
}

Answer answerOf(const Step& step) {
    Answer answer;
    step(answer);
    return answer;
}

Answer answerWithout(const Step& step, int n, MemoryFault fault) {
    Answer answer;
    const FailingAllocation failing(n, fault);
    try {
        step(answer);
    } catch (const std::bad_alloc&) {
        answer.replace(kThrows);
    }
    return answer;
}

bool isStated(const AllocationPath& path, const Answer& outOfMemory) {
    return std::ranges::find(path.outOfMemory, outOfMemory.text()) != path.outOfMemory.end();
}

std::function<Step()> alone(void (*step)(Answer&)) {
    return [step] { return Step(step); };
}

Step withFile(std::string_view content, void (*use)(Answer&, const SV::String& path)) {
    const auto folder = std::make_shared<TempDir>();
    return [folder, use, path = SV::String(folder->write("file.txt", content))](Answer& answer) {
        use(answer, path);
    };
}

const Paths& portablePaths() {
    static const Paths paths = [] {
        Paths all;
        for (const Paths& some :
             {kTexts, kMatchers, kBase64, kTime, kEncryption, kFiles, kEvents}) {
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return paths;
}
