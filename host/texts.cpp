#include "texts.h"

#include "sv/resource.h"

namespace zelhost {

SV::String textOf(Text text) {
    return SV::Resource::GetString(SV::ResId(static_cast<std::uint32_t>(text)));
}

}  // namespace zelhost
