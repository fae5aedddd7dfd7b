// Of code page 1252, which the others resemble enough for this machine's programs.

#include "text/bytekinds.h"

namespace {

ByteSet setOf(std::string_view bytes) {
    ByteSet set;
    for (const char byte : bytes) set.add(static_cast<unsigned char>(byte));
    return set;
}

ByteSet range(int first, int last) {
    ByteSet set;
    for (int byte = first; byte <= last; ++byte) set.add(static_cast<unsigned char>(byte));
    return set;
}

void pair(ByteKinds& kinds, int upper, int lower) {
    kinds.upper.add(static_cast<unsigned char>(upper));
    kinds.lower.add(static_cast<unsigned char>(lower));
    kinds.otherCase[static_cast<std::size_t>(upper)] = static_cast<unsigned char>(lower);
    kinds.otherCase[static_cast<std::size_t>(lower)] = static_cast<unsigned char>(upper);
}

void addLetters(ByteKinds& kinds) {
    for (int letter = 'A'; letter <= 'Z'; ++letter) pair(kinds, letter, letter + 32);
    for (int letter = 0xC0; letter <= 0xDE; ++letter) {
        if (letter != 0xD7) pair(kinds, letter, letter + 32);
    }
    pair(kinds, 0x8A, 0x9A);
    pair(kinds, 0x8C, 0x9C);
    pair(kinds, 0x8E, 0x9E);
    pair(kinds, 0x9F, 0xFF);
    kinds.lower.add(setOf("\x83\xAA\xB5\xBA\xDF"));
    kinds.alpha.add(kinds.upper);
    kinds.alpha.add(kinds.lower);
    kinds.alpha.add(setOf("\x88"));
}

ByteKinds codePage1252() {
    ByteKinds kinds{};
    for (std::size_t i = 0; i < 256; ++i) kinds.otherCase[i] = static_cast<unsigned char>(i);
    addLetters(kinds);
    kinds.digit = range('0', '9');
    kinds.xdigit = range('0', '9');
    kinds.xdigit.add(setOf("abcdefABCDEF"));
    kinds.space = range('\t', '\r');
    kinds.space.add(setOf(" \xA0"));
    kinds.blank = setOf("\t \xA0");
    kinds.cntrl = range(0, 31);
    kinds.cntrl.add(setOf("\x7F\x81\x8D\x8F\x90\x9D\xAD"));
    kinds.punct = ByteSet::all();
    for (const ByteSet* other : {&kinds.alpha, &kinds.digit, &kinds.blank, &kinds.cntrl}) {
        other->forEach([&](unsigned char byte) { kinds.punct.remove(byte); });
    }
    setOf("\x80\x98\x99").forEach([&](unsigned char byte) { kinds.punct.remove(byte); });
    kinds.punct.add(setOf("\xAA\xAD\xB5\xBA"));  // the system counts these twice
    return kinds;
}

}  // namespace

const ByteKinds& byteKinds() {
    static const ByteKinds kinds = codePage1252();
    return kinds;
}
