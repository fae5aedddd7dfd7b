#include "text/pcrematcher.h"

#include <cstdint>
#include <string>
#include <utility>

#include "text/bytekinds.h"
#include "text/pcrepattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace {

template <auto kFree>
struct Freer {
    template <class T>
    void operator()(T* object) const {
        kFree(object);
    }
};
template <class T, auto kFree>
using Owner = std::unique_ptr<T, Freer<kFree>>;

using Code = Owner<pcre2_code, pcre2_code_free>;
using CompileContext = Owner<pcre2_compile_context, pcre2_compile_context_free>;
using MatchContext = Owner<pcre2_match_context, pcre2_match_context_free>;
using MatchData = Owner<pcre2_match_data, pcre2_match_data_free>;

// A few milliseconds: what takes longer is for the automaton.
constexpr std::uint32_t kMaxSteps = 200'000;
// Groups of ours, and as many around what is repeated within each.
constexpr std::uint32_t kMaxNesting = 6 * kMaxPatternDepth;

// PCRE2's tables with the cases of the code page in place of the C locale's. The classes behind
// them are not used: sets are written out. Null when there is no memory.
const std::uint8_t* characterTables() {
    static const std::uint8_t* const tables = [] {
        auto* const made = const_cast<std::uint8_t*>(pcre2_maketables(nullptr));
        if (!made) return made;
        const ByteKinds& kinds = byteKinds();
        for (std::size_t i = 0; i < 256; ++i) {
            const auto byte = static_cast<unsigned char>(i);
            const unsigned char other = kinds.otherCase[i];
            made[i] = kinds.upper.contains(byte) ? other : byte;  // lower case
            made[256 + i] = other;
        }
        return made;  // for the life of the process
    }();
    return tables;
}

std::uint32_t optionsFor(const PosixPattern& pattern) {
    const std::uint32_t options = PCRE2_DOTALL | PCRE2_DOLLAR_ENDONLY | PCRE2_NEVER_UTF;
    return pattern.ignoresCase ? options | PCRE2_CASELESS : options;
}

Code compiled(const PosixPattern& pattern) {
    const CompileContext context(pcre2_compile_context_create(nullptr));
    if (!context || !characterTables()) return nullptr;
    pcre2_set_character_tables(context.get(), characterTables());
    pcre2_set_parens_nest_limit(context.get(), kMaxNesting);
    const std::string text = pcrePattern(pattern);
    int error = 0;
    PCRE2_SIZE errorOffset = 0;
    return Code(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(),
                              optionsFor(pattern), &error, &errorOffset, context.get()));
}

}  // namespace

struct PcreMatcher::Parts {
    Code code;
    MatchContext context;
    MatchData data;
};

PcreMatcher::PcreMatcher(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
PcreMatcher::~PcreMatcher() = default;

std::unique_ptr<PcreMatcher> PcreMatcher::compile(const PosixPattern& pattern) {
    Code code = compiled(pattern);
    if (!code || pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) != 0) return nullptr;
    MatchContext context(pcre2_match_context_create(nullptr));
    MatchData data(pcre2_match_data_create(1, nullptr));
    if (!context || !data) return nullptr;
    pcre2_set_match_limit(context.get(), kMaxSteps);
    std::unique_ptr<Parts> parts(new Parts{std::move(code), std::move(context), std::move(data)});
    return std::unique_ptr<PcreMatcher>(new PcreMatcher(std::move(parts)));
}

PcreMatcher::Result PcreMatcher::search(std::string_view text, std::size_t& start,
                                        std::size_t& end) {
    const int result =
        pcre2_jit_match(m_parts->code.get(), reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(),
                        0, 0, m_parts->data.get(), m_parts->context.get());
    if (result == PCRE2_ERROR_NOMATCH) return Result::kNone;
    if (result < 0) return Result::kGaveUp;
    const PCRE2_SIZE* const positions = pcre2_get_ovector_pointer(m_parts->data.get());
    start = positions[0];
    end = positions[1];
    return Result::kFound;
}
