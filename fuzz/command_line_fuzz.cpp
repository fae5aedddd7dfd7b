// Command lines, against a second reading of the rules. The arguments, the program's path being the
// first, stand one a line; the last line is the name of an option.

#include <vector>

#include "input.h"
#include "zbasic/zcmdline.h"

namespace {

// Each of them as if the process had just started.
class CommandLine : public ZelCmdline {
public:
    CommandLine(int argc, char** argv) { _init(argc, argv); }
};

struct Value {
    bool isThere = false;
    std::string text;
};

Value valueOf(const std::vector<std::string>& arguments, std::string_view name) {
    for (const std::string& argument : arguments) {
        const bool isOption = argument.starts_with('-') || argument.starts_with('/');
        if (&argument == &arguments.front() || !isOption) continue;
        const std::string_view option = std::string_view(argument).substr(1);
        if (option.starts_with(name)) return {true, std::string(option.substr(name.size()))};
    }
    return {};
}

bool hasFlag(const std::vector<std::string>& arguments, const std::string& name) {
    return std::any_of(arguments.begin() + 1, arguments.end(), [&](const std::string& argument) {
        return argument == "-" + name || argument == "/" + name;
    });
}

void checkValues(const CommandLine& line, const std::vector<std::string>& arguments) {
    const auto value = [&](const char* name) { return valueOf(arguments, name).text; };
    check(std::string_view(line.getLoginUserName()) == value("u"));
    check(std::string_view(line.getLoginPassword()) == value("p"));
    check(std::string_view(line.getPIDFileName()) == value("pidfile"));
    check(line.getWSPortNumber() == SV::h_atoi(value("port").c_str()));
    const Value backup = valueOf(arguments, "wslogbackup");
    check(line.getWSLogFileBackupCount() ==
          (backup.isThere ? SV::h_atoi(backup.text.c_str()) : -1));
    SV::String script("untouched");
    const Value expected = valueOf(arguments, "e");
    check(line.getStartupZelScript(script) == expected.isThere);
    check(std::string_view(script) == (expected.isThere ? expected.text : "untouched"));
}

// No line clears a flag, so an earlier one may have set it.
void checkFlags(const CommandLine& line, const std::vector<std::string>& arguments) {
    static bool isTracing = false;
    static bool isProfiling = false;
    isTracing = isTracing || hasFlag(arguments, "trace");
    isProfiling = isProfiling || hasFlag(arguments, "profiling");
    check(line.doTracing() == isTracing && line.profiling() == isProfiling);
    check(!line.debugMemDelayFree() && !line.debugMemHeapCheck());
}

void checkSchemaVersion(const CommandLine& line, const std::vector<std::string>& arguments) {
    std::string path = arguments[0];
    for (char& c : path) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    const std::size_t start = path.find_last_of("\\/:") + 1;
    const bool isServer = path.substr(start) == "zwssrv.exe";
    check(std::string_view(line.getLoginSchemaVersion()) ==
          (isServer ? valueOf(arguments, "v").text : ""));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    std::ranges::replace(text, '\0', '\n');
    Bytes input(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    std::vector<std::string> arguments = {std::string(input.until('\n'))};
    while (!input.isEmpty()) arguments.emplace_back(input.until('\n'));
    const std::string name = arguments.back();
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);

    const CommandLine line(static_cast<int>(arguments.size()), argv.data());
    const Value expected = valueOf(arguments, name);
    check(line.isFlag(name.c_str()) == expected.isThere);
    check(std::string_view(line.getValue(name.c_str())) == expected.text);
    check(line.getInt(name.c_str()) == SV::h_atoi(expected.text.c_str()));
    for (int i = 0; i < line.getCount(); ++i) {
        check(std::string_view(line.getParam(i)) == arguments[static_cast<std::size_t>(i)]);
    }
    check(line.getParam(line.getCount()).empty() && line.getParam(-1).empty());
    checkValues(line, arguments);
    checkFlags(line, arguments);
    checkSchemaVersion(line, arguments);
    return 0;
}
