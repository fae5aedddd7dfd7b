// What went wrong, kept so that it can be said in more than one language.

#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zelhost {

struct Message {
    Message() = default;
    // `text` is English, with a "%s" for each of the details. The texts in other languages are
    // found by it, see texts/.
    Message(const char* english, std::vector<std::string> itsDetails = {})
        : text(english), details(std::move(itsDetails)) {}

    bool empty() const { return !*text; }

    std::string place;  // the file and the line that it is about; empty: none
    const char* text = "";
    std::vector<std::string> details;
    std::uint32_t systemError = 0;  // which the last of the details is about; 0: none
};

// "file(12)", without the line when that is 0.
std::string placeOf(const std::string& fileName, std::int64_t line);

// `text` with the place in front and the details in place of each "%s".
std::string filled(const Message& message, std::string text);

std::string inEnglish(const Message& message);

}  // namespace zelhost
