// Text on its way to routines that take the process code page.

#pragma once

#include <optional>
#include <string_view>

#include "model/encoding.h"
#include "sv/codepage1252.h"
#include "sv/string.h"

namespace zelhost {

// Splits `utf8` into runs of characters that code page 1252 holds and `isWanted` accepts, given
// to `onRun` as an `SV::String`, and all others, given one by one to `onOther(char32_t)`.
template <typename IsWanted, typename OnRun, typename OnOther>
void splitByCodePage(std::string_view utf8, IsWanted isWanted, OnRun onRun, OnOther onOther) {
    SV::String run;
    while (!utf8.empty()) {
        const auto [character, size] = decodeUtf8(utf8);
        utf8.remove_prefix(size);
        const std::optional<char> byte = SV::CharacterToCodePage1252(character);
        if (byte && isWanted(character)) {
            run += *byte;
            continue;
        }
        if (!run.empty()) onRun(run);
        run.clear();
        onOther(character);
    }
    if (!run.empty()) onRun(run);
}

}  // namespace zelhost
