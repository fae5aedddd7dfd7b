#include "judge.h"

#include <optional>

#include "zbasic/zversionnumber.h"

namespace zelplugcheck {

namespace {

using Outcome = Check::Outcome;

constexpr int kVersion =
    (ZBASIC_VERSION_HIGH * 100 + ZBASIC_VERSION_LOW) * 1000000 + ZBASIC_VERSION_BUILD;
constexpr int kGeneral = 101;
constexpr int kScript = 102;

constexpr char kVersionExport[] = "ZelPluginFctGetVersion";
constexpr char kTypeExport[] = "ZelPluginFctGetType";
constexpr char kExecutionTypeExport[] = "ZelPluginFctZelScriptGetExecutionType";
constexpr const char* kScriptExports[] = {
    kExecutionTypeExport,
    "ZelPluginFctZelScriptGetMessagePortName",
    "ZelPluginFctZelScriptHandleRequestMsg",
    "ZelPluginFctZelScriptHandleRequestDirect",
    "ZelPluginFctZelScriptIsCommandExisting",
    "ZelPluginFctZelScriptGetAllCommands",
};

const char* editionsOf(int executionType) {
    switch (executionType) {
        case 42:
            return "for WVTK";
        case 43:
            return "for QXTK";
        case 44:
            return "for WVTK and QXTK";
        default:
            return "no known one: taken in QXTK, but not used there";
    }
}

class Judge {
public:
    explicit Judge(const PeImage& image) : m_image(image) {}

    std::vector<Check> run() {
        if (isLoadable() && hasExport(kVersionExport) && isOfThisVersion() &&
            hasExport(kTypeExport)) {
            judgeType();
        }
        return m_checks;
    }

private:
    bool add(bool isGood, std::string text) {
        m_checks.push_back({isGood ? Outcome::kGood : Outcome::kBad, std::move(text)});
        return isGood;
    }
    void addUnknown(const char* what) {
        m_checks.push_back({Outcome::kUnknown, std::string(what) + " is computed by its code"});
    }
    bool hasExport(const char* name) {
        return add(m_image.exports(name),
                   (m_image.exports(name) ? "exports " : "does not export ") + std::string(name));
    }
    bool isLoadable() {
        if (!add(m_image.isPe(), m_image.isPe() ? "is a Windows file" : "is no Windows file") ||
            !add(m_image.isDll(), m_image.isDll() ? "is a DLL" : "is a program, no DLL")) {
            return false;
        }
        constexpr int kI386 = 0x014C;
        return add(m_image.isX64(), m_image.isX64()              ? "is for x86-64"
                                    : m_image.machine() == kI386 ? "is for 32-bit x86"
                                                                 : "is for another architecture");
    }
    bool isOfThisVersion() {
        const std::optional<int> version = m_image.constantOf(kVersionExport);
        if (!version) {
            addUnknown("its version");
            return true;
        }
        const std::string text = "its version is " + std::to_string(*version);
        if (*version == kVersion) return add(true, text);
        return add(false, text + ", the library's " + std::to_string(kVersion));
    }
    void judgeType() {
        const std::optional<int> type = m_image.constantOf(kTypeExport);
        if (!type) return addUnknown("its type");
        const std::string text = "its type is " + std::to_string(*type);
        if (*type == kGeneral) {
            add(true, text + ", general");
        } else if (*type == kScript) {
            add(true, text + ", script");
            judgeScript();
        } else {
            add(false, text + ", which there is not");
        }
    }
    void judgeScript() {
        for (const char* const name : kScriptExports) {
            if (!hasExport(name)) return;
        }
        const std::optional<int> type = m_image.constantOf(kExecutionTypeExport);
        if (!type) return addUnknown("its execution type");
        add(true, "its execution type is " + std::to_string(*type) + ", " + editionsOf(*type));
    }

    const PeImage& m_image;
    std::vector<Check> m_checks;
};

}  // namespace

std::vector<Check> judge(const PeImage& image) { return Judge(image).run(); }

}  // namespace zelplugcheck
