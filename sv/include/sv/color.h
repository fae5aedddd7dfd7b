// Colours.

#pragma once

#include <cstdint>

namespace SV {

// An RGB colour, held as the system's COLORREF (0x00BBGGRR).
class Color {
public:
    constexpr Color() = default;  // black
    // Each part from 0 to 255.
    constexpr Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
        : m_value(static_cast<std::uint32_t>(red | green << 8 | blue << 16)) {}
    // From a COLORREF, whose highest byte is dropped.
    static constexpr Color FromRef(std::uint32_t value) {
        Color color;
        color.m_value = value & 0x00FFFFFFu;
        return color;
    }

    // 0 to 255.
    constexpr std::uint8_t GetRed() const { return static_cast<std::uint8_t>(m_value); }
    constexpr std::uint8_t GetGreen() const { return static_cast<std::uint8_t>(m_value >> 8); }
    constexpr std::uint8_t GetBlue() const { return static_cast<std::uint8_t>(m_value >> 16); }
    // The COLORREF, its highest byte 0.
    constexpr std::uint32_t GetRef() const { return m_value; }

    friend constexpr bool operator==(Color, Color) = default;  // the same three parts?

private:
    std::uint32_t m_value = 0;
};

}  // namespace SV
