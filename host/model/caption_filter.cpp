#include "model/caption_filter.h"

namespace zelhost {

namespace {

constexpr int kIgnoreCase = 1;

}  // namespace

CaptionFilter::CaptionFilter(const SV::String& pattern) : m_pattern(pattern.c_str(), kIgnoreCase) {}

void CaptionFilter::apply(Graph& graph) const {
    graph.keepNodes([this](std::string_view caption) {
        const SV::String text = SV::ConvertUTF8StringToString(SV::String(caption));
        return m_pattern.match(text.c_str()) != 0;
    });
}

}  // namespace zelhost
