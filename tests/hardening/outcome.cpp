#include "hardening/outcome.h"

#include <filesystem>

#include <windows.h>

namespace {

std::string variable(const char* name) {
    char value[4096] = "";
    ::GetEnvironmentVariableA(name, value, sizeof value);
    return value;
}

}  // namespace

std::string internalErrors(const std::string& debugOutput) {
    constexpr char kBegin[] = "[dEM] ";
    std::string errors;
    for (std::size_t at = 0; (at = debugOutput.find(kBegin, at)) != std::string::npos; ++at) {
        const std::size_t code = debugOutput.find("): ", at) + 3;
        errors += " " + debugOutput.substr(code, debugOutput.find(" [", code) - code);
    }
    return errors;
}

bool FaultyPlace::Program::Exception(long code, unsigned long detail) {
    exceptions += " exception " + std::to_string(code);
    // The detail of a file is the address of its name.
    if (code != kResourceFileFailed) exceptions += "/" + std::to_string(detail);
    return true;
}

FaultyPlace::FaultyPlace()
    : m_before(std::filesystem::current_path().string()),
      m_temp(variable("TEMP")),
      m_tmp(variable("TMP")) {
    std::filesystem::current_path(m_folder.root());
    for (const char* const name : {"TEMP", "TMP"}) {
        ::SetEnvironmentVariableA(name, m_folder.path("nowhere").c_str());
    }
    SV::Application::SetModalDialogSuppression(true);
}

FaultyPlace::~FaultyPlace() {
    SV::Application::SetModalDialogSuppression(false);
    ::SetEnvironmentVariableA("TEMP", m_temp.c_str());
    ::SetEnvironmentVariableA("TMP", m_tmp.c_str());
    std::filesystem::current_path(m_before);
}

std::string FaultyPlace::reports() const {
    return internalErrors(DebugOutput::text()) + m_program.exceptions;
}
