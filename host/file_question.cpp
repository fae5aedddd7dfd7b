#include "file_question.h"

#include <algorithm>

#include "paths.h"
#include "sv/systemfunction.h"
#include "texts.h"

#include <windows.h>
#include <commdlg.h>

namespace zelhost {

namespace {

// The common dialogs bring half of the system with them.
bool askForFile(OPENFILENAMEA& question) {
    auto* const ask =
        SV::SystemFunction<decltype(::GetOpenFileNameA)>("comdlg32.dll", "GetOpenFileNameA");
    return ask && ask(&question);
}

}  // namespace

std::optional<std::string> askForModel(const SV::Window& owner) {
    const SV::String filterText = textOf(Text::kOpenFilter);
    std::string filter(filterText.begin(), filterText.end());
    std::ranges::replace(filter, '|', '\0');  // the system separates by NUL
    const SV::String title = textOf(Text::kOpenTitle);
    char path[4096] = "";
    OPENFILENAMEA question = {};
    question.lStructSize = sizeof question;
    question.hwndOwner = owner.GetHandle();
    question.lpstrFilter = filter.c_str();
    question.lpstrFile = path;
    question.nMaxFile = sizeof path;
    question.lpstrTitle = title.c_str();
    const std::string extension = modelExtension();
    question.lpstrDefExt = extension.c_str();
    question.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    if (!askForFile(question)) return std::nullopt;
    return path;
}

}  // namespace zelhost
