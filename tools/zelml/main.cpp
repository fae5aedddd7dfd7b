// zelml: makes, checks and shows multi-language string files.

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "binary.h"
#include "common/files.h"
#include "source.h"

namespace {

enum ExitCode { kDone = 0, kRefused = 1, kWrongUsage = 2 };

constexpr std::size_t kMaxErrorsShown = 50;
constexpr std::size_t kMaxSourceSize = 1 << 30;  // so that every length fits its 31 bits

constexpr char kUsage[] =
    "zelml build SOURCE OUTPUT   makes a multi-language string file\n"
    "zelml check SOURCE          reports the errors of a source\n"
    "zelml print FILE            shows a multi-language string file as a source\n"
    "zelml --help | --version\n"
    "\n"
    "A source is UTF-8 text: lines of the form  id = \"text\"  and comments behind \"#\".\n"
    "Exit status: 0 done, 1 refused or damaged, 2 wrong usage.\n";

int refuse(const std::string& path, const char* what, const std::string& reason) {
    std::fprintf(stderr, "%s: %s (%s)\n", path.c_str(), what, reason.c_str());
    return kRefused;
}

int reportErrors(const std::string& path, const std::vector<SourceError>& errors) {
    for (std::size_t i = 0; i < errors.size() && i < kMaxErrorsShown; ++i) {
        std::fprintf(stderr, "%s(%s): %s\n", path.c_str(), std::to_string(errors[i].line).c_str(),
                     errors[i].message.c_str());
    }
    if (errors.size() > kMaxErrorsShown) {
        std::fprintf(stderr, "%s: %s errors in all\n", path.c_str(),
                     std::to_string(errors.size()).c_str());
    }
    return kRefused;
}

int build(const std::string& sourcePath, const std::string* outputPath) {
    std::string content;
    std::string reason;
    if (!loadFile(sourcePath, content, reason)) return refuse(sourcePath, "cannot be read", reason);
    if (content.size() > kMaxSourceSize) return refuse(sourcePath, "cannot be read", "over 1 GiB");
    const Source source = parseSource(content);
    if (!source.errors.empty()) return reportErrors(sourcePath, source.errors);
    if (outputPath && !saveFile(*outputPath, makeFile(source.texts), reason)) {
        return refuse(*outputPath, "cannot be written", reason);
    }
    return kDone;
}

int print(const std::string& path) {
    std::string bytes;
    std::string reason;
    if (!loadFile(path, bytes, reason)) return refuse(path, "cannot be read", reason);
    const FileContent content = readFile(bytes);
    for (const auto& [id, text] : content.texts) std::puts(sourceLine(id, text).c_str());
    for (const auto& [offset, message] : content.faults) {
        std::fprintf(stderr, "%s: byte %s: %s\n", path.c_str(), std::to_string(offset).c_str(),
                     message.c_str());
    }
    return content.faults.empty() ? kDone : kRefused;
}

int run(const std::vector<std::string>& arguments) {
    const std::string command = arguments.empty() ? "" : arguments[0];
    if (command == "build" && arguments.size() == 3) return build(arguments[1], &arguments[2]);
    if (command == "check" && arguments.size() == 2) return build(arguments[1], nullptr);
    if (command == "print" && arguments.size() == 2) return print(arguments[1]);
    if (command == "--help" && arguments.size() == 1) {
        std::fputs(kUsage, stdout);
        return kDone;
    }
    if (command == "--version" && arguments.size() == 1) {
        std::puts("zelml " ZELML_VERSION);
        return kDone;
    }
    std::fputs(kUsage, stderr);
    return kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
    const int status = run({argv + 1, argv + argc});
    return finishOutput() ? status : kRefused;
}
