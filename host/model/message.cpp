#include "model/message.h"

namespace zelhost {

std::string placeOf(const std::string& fileName, std::int64_t line) {
    return line > 0 ? fileName + "(" + std::to_string(line) + ")" : fileName;
}

std::string filled(const Message& message, std::string text) {
    std::size_t start = 0;  // details may hold a "%s" themselves
    for (const std::string& detail : message.details) {
        const std::size_t place = text.find("%s", start);
        if (place == std::string::npos) break;
        text.replace(place, 2, detail);
        start = place + detail.size();
    }
    return message.place.empty() ? text : message.place + ": " + text;
}

std::string inEnglish(const Message& message) { return filled(message, message.text); }

}  // namespace zelhost
