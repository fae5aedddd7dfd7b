#include "sys/codepagedecoder.h"

#include <windows.h>

namespace {

// In any code page; there are no more units than bytes.
constexpr std::size_t kMostBytesOfAUnit = 3;

}  // namespace

CodePageDecoder::CodePageDecoder(std::size_t mostBytes)
    : m_outSize(kMostBytesOfAUnit * mostBytes),
      m_wide(std::make_unique_for_overwrite<wchar_t[]>(mostBytes)),
      m_out(std::make_unique_for_overwrite<char[]>(m_outSize)) {}

void CodePageDecoder::append(SV::String& text, std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    const int wideSize = ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, m_wide.get(), size);
    // Without best fit: a character that is not there must not come out as another one.
    const DWORD flags =
        ::GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;  // UTF-8 takes no such flag
    const int outSize = ::WideCharToMultiByte(CP_ACP, flags, m_wide.get(), wideSize, m_out.get(),
                                              static_cast<int>(m_outSize), nullptr, nullptr);
    text.append(m_out.get(), static_cast<std::size_t>(outSize));
}
