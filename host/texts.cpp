#include "texts.h"

#include "sv/resource.h"

namespace zelhost {

SV::String textOf(Text text) {
    return SV::Resource::GetString(SV::ResId(static_cast<std::uint32_t>(text)));
}

SV::String filled(Text text, std::string_view value) {
    SV::String result = textOf(text);
    const std::size_t place = result.find("%s");
    return place == SV::String::npos ? result : result.replace(place, 2, value);
}

}  // namespace zelhost
