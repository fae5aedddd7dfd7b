#include "texts.h"

#include "sv/resource.h"

namespace zelhost {

SV::String textOf(Text text) {
    return SV::Resource::GetString(SV::ResId(static_cast<std::uint32_t>(text)));
}

SV::String filled(SV::String text, std::string_view value) {
    const std::size_t place = text.find("%s");
    return place == SV::String::npos ? text : text.replace(place, 2, value);
}

SV::String filled(Text text, std::string_view value) { return filled(textOf(text), value); }

}  // namespace zelhost
