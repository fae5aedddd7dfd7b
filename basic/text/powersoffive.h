// The leading bits of powers of five, for reading decimal numbers.

#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

// The first 64 binary digits of 5^n, the leading one included, the rest cut off. The ends are such
// that an integer of 64 bits times 10^n is neither too large nor too small for a normal double.
class PowersOfFive {
public:
    static constexpr int kMin = -307;
    static constexpr int kMax = 288;

    constexpr PowersOfFive() {
        Wide power;
        power.words[0] = 1;
        for (int n = 0; n <= kMax; ++n, power.timesFive()) at(n) = power.leadingBits();
        // Quotients of quotients are cut off where the quotient by the product is.
        power = {};
        power.words.back() = std::uint32_t{1} << 31;
        for (int n = 0; n >= kMin; --n, power.overFive()) at(n) = power.leadingBits();
    }
    constexpr std::uint64_t operator[](int n) const {
        return m_bits[static_cast<std::size_t>(n - kMin)];
    }
    // The power of two that the leading digit of 5^n stands for: log2(5) in steps of 2^-16 is
    // near enough.
    static constexpr int binaryExponent(int n) { return n * 152170 >> 16; }

private:
    // Room for 5^kMax, and for 64 bits above 5^-kMin.
    struct Wide {
        std::array<std::uint32_t, 25> words{};  // lowest first

        constexpr void timesFive() {
            std::uint64_t carry = 0;
            for (std::uint32_t& word : words) {
                carry += std::uint64_t{word} * 5;
                word = static_cast<std::uint32_t>(carry);
                carry >>= 32;
            }
        }
        constexpr void overFive() {
            std::uint64_t rest = 0;
            for (std::size_t i = words.size(); i-- > 0;) {
                rest = rest << 32 | words[i];
                words[i] = static_cast<std::uint32_t>(rest / 5);
                rest %= 5;
            }
        }
        constexpr std::uint64_t leadingBits() const {
            std::size_t i = words.size() - 1;
            while (words[i] == 0) --i;
            const auto wordAt = [&](std::size_t below) {
                return i >= below ? words[i - below] : 0;
            };
            const std::uint64_t top = std::uint64_t{wordAt(0)} << 32 | wordAt(1);
            const int shift = std::countl_zero(top);
            return shift == 0 ? top : top << shift | wordAt(2) >> (32 - shift);
        }
    };
    constexpr std::uint64_t& at(int n) { return m_bits[static_cast<std::size_t>(n - kMin)]; }

    std::array<std::uint64_t, kMax - kMin + 1> m_bits{};
};
