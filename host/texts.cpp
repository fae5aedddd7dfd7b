#include "texts.h"

#include "paths.h"
#include "sv/resource.h"
#include "zbasic/zinter.h"

namespace zelhost {

namespace {

// From here on: the English text of a message, and behind it what it is in this language. English
// has none, it is in the code: the program speaks it on the console, for which it needs no files.
constexpr std::uint32_t kFirstMessage = 41000;

std::string translated(const std::string& english) {
    SV::String text;
    for (std::uint32_t number = kFirstMessage; SV::Resource::FindString(number, text);
         number += 2) {
        if (text == english.c_str() && SV::Resource::FindString(number + 1, text)) {
            return text.c_str();
        }
    }
    return english;
}

}  // namespace

SV::String textOf(Text text) {
    return SV::Resource::GetString(SV::ResId(static_cast<std::uint32_t>(text)));
}

std::string inLanguage(const Message& message) {
    Message own = message;
    if (own.systemError != 0) {
        own.details.back() =
            systemMessage(own.systemError, ZelInternational::GetCurrentLanguageID());
    }
    return filled(own, translated(own.text));
}

SV::String filled(SV::String text, std::string_view value) {
    const std::size_t place = text.find("%s");
    return place == SV::String::npos ? text : text.replace(place, 2, value);
}

SV::String filled(Text text, std::string_view value) { return filled(textOf(text), value); }

}  // namespace zelhost
