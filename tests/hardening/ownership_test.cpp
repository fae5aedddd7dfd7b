// What callers get and have to release, and what they hand in: who allocated it, and that the
// documented call gives it back (docs/ownership.md).

#include <gtest/gtest.h>

#include <cstddef>
#include <utility>

#include "sv/font.h"
#include "sv/gdi.h"
#include "sv/image.h"
#include "sv/window.h"
#include "zbasic/zbase64.h"
#include "zbasic/zcleanup.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zfarcall.h"
#include "zbasic/zmatcher.h"
#include "zbasic/zmemcache.h"
#include "zbasic/zplugin.h"
#include "zbasic/ztextparser.h"

#include <windows.h>

#include <malloc.h>

namespace {

constexpr int kRounds = 200;

// The blocks that are in use in the run time's heap.
std::size_t blocksInUse() {
    const auto heap = reinterpret_cast<HANDLE>(_get_heap_handle());
    std::size_t count = 0;
    ::HeapLock(heap);
    PROCESS_HEAP_ENTRY entry = {};
    while (::HeapWalk(heap, &entry)) count += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0;
    ::HeapUnlock(heap);
    return count;
}

bool isOfTheHeap(const void* block) {
    return ::HeapValidate(reinterpret_cast<HANDLE>(_get_heap_handle()), 0, block) != 0;
}

// How many blocks are left of that many rounds; the first one may set up what stays.
template <class Round>
std::ptrdiff_t blocksLeftBy(const Round& round) {
    round();
    const std::size_t before = blocksInUse();
    for (int i = 0; i < kRounds; ++i) round();
    return static_cast<std::ptrdiff_t>(blocksInUse()) - static_cast<std::ptrdiff_t>(before);
}

void freeText(void* buffer) { ZelCryptoUtils::Free(buffer); }
void deleteText(void* buffer) { delete[] static_cast<char*>(buffer); }

constexpr unsigned char kData[] = "thirty-two bytes of data and keys";
char g_text[] = "abcdefgh";
char g_digits[] = "00112233445566778899aabbccddeeff";
char g_base64[] = "TWFu";
char g_noBase64[] = "T*Fu";

template <class Byte>
void* first(const std::pair<Byte*, int>& result) {
    return result.first;
}

template <long (*call)(char*&)>
void* outOf() {
    char* out = nullptr;
    call(out);
    return out;
}

using Base64 = bool (*)(char*, unsigned long, char*&, unsigned long&);
bool newEncode(char* in, unsigned long size, char*& out, unsigned long& outSize) {
    return Zel_NewBase64Encode(in, size, out, outSize);
}
bool newDecode(char* in, unsigned long size, char*& out, unsigned long& outSize) {
    return Zel_NewBase64Decode(in, size, out, outSize);
}

template <Base64 call>
void* base64(char* text) {
    char* out = nullptr;
    unsigned long size = 0;
    call(text, 4, out, size);
    return out;
}

struct HandedOut {
    const char* call;
    void* (*take)();
    void (*release)(void*);
    bool isNull = false;  // there is nothing to release, and trying is harmless
};

// Every call of the headers whose result the caller has to release into the heap.
const HandedOut kHandedOut[] = {
    {"HexEncode", [] { return first(ZelCryptoUtils::HexEncode(kData, 9)); }, freeText},
    {"HexDecode", [] { return first(ZelCryptoUtils::HexDecode("00FF")); }, freeText},
    {"HexDecode, fails", [] { return first(ZelCryptoUtils::HexDecode("0G")); }, freeText, true},
    {"Base64Encode", [] { return first(ZelCryptoUtils::Base64Encode(kData, 32)); }, freeText},
    {"Base64Decode", [] { return first(ZelCryptoUtils::Base64Decode("TWFu\n")); }, freeText},
    {"Base64Decode, nothing", [] { return first(ZelCryptoUtils::Base64Decode("TWFu")); }, freeText},
    {"AESEncrypt, chained",
     [] { return first(ZelCryptoUtils::AESEncrypt(kData, 17, kData, 256, kData)); }, freeText},
    {"AESDecrypt, chained",
     [] { return first(ZelCryptoUtils::AESDecrypt(kData, 17, kData, 128, kData)); }, freeText},
    {"AESDecrypt, chained, no such key",
     [] { return first(ZelCryptoUtils::AESDecrypt(kData, 16, kData, 100, kData)); }, freeText,
     true},
    {"AESEncrypt, one block", [] { return first(ZelCryptoUtils::AESEncrypt(kData, 3, kData, 16)); },
     freeText},
    {"AESDecrypt, one block",
     [] { return first(ZelCryptoUtils::AESDecrypt(kData, 16, kData, 32)); }, freeText},
    {"AESEncrypt, built-in key", [] { return first(ZelCryptoUtils::AESEncrypt(g_text)); },
     freeText},
    {"AESDecrypt, built-in key", [] { return first(ZelCryptoUtils::AESDecrypt(g_digits)); },
     freeText},
    {"AESDecrypt, built-in key, fails", [] { return first(ZelCryptoUtils::AESDecrypt("0")); },
     freeText, true},
    {"Encrypt of type 0",
     outOf<[](char*& out) { return ZelEncryption::Instance().Encrypt(0, g_text, out, 5); }>,
     freeText},
    {"Encrypt of type 2",
     outOf<[](char*& out) { return ZelEncryption::Instance().Encrypt(2, g_text, out, -1); }>,
     freeText},
    {"Encrypt of the process's type",
     outOf<[](char*& out) { return ZelEncryption::Instance().Encrypt(g_text, out, -1); }>,
     freeText},
    {"Decrypt of type 1",
     outOf<[](char*& out) { return ZelEncryption::Instance().Decrypt(1, g_digits, out); }>,
     freeText},
    {"Decrypt of type 2",
     outOf<[](char*& out) { return ZelEncryption::Instance().Decrypt(2, g_digits, out); }>,
     freeText},
    {"Decrypt of type 2, fails",
     outOf<[](char*& out) { return ZelEncryption::Instance().Decrypt(2, g_base64 + 1, out); }>,
     freeText, true},
    {"Decrypt of the process's type",
     outOf<[](char*& out) { return ZelEncryption::Instance().Decrypt(g_digits, out); }>, freeText},
    {"Zel_Decrypt",
     [] {
         unsigned char* out = nullptr;
         Zel_Decrypt(g_digits, out);
         return static_cast<void*>(out);
     },
     freeText},
    {"Zel_OldBase64Encode", [] { return base64<Zel_OldBase64Encode>(g_text); }, deleteText},
    {"Zel_NewBase64Encode", [] { return base64<newEncode>(g_text); }, deleteText},
    {"Zel_OldBase64Decode", [] { return base64<Zel_OldBase64Decode>(g_base64); }, deleteText},
    {"Zel_OldBase64Decode, fails", [] { return base64<Zel_OldBase64Decode>(g_noBase64); },
     deleteText},
    {"Zel_NewBase64Decode", [] { return base64<newDecode>(g_base64); }, deleteText},
    {"Zel_NewBase64Decode, fails", [] { return base64<newDecode>(g_noBase64); }, deleteText},
};

struct HandedIn {
    const char* what;
    void (*round)();
};

class Nothing final : public ZelCleanUpAction {
public:
    bool execute() override { return true; }
};

// What is handed in and then belongs to the library, in whole rounds.
const HandedIn kHandedIn[] = {
    {"a reader to its parser", [] { ZelTextParser(new ZelTextFileReader("no such file")); }},
    {"a loader to its plug-in", [] { ZelPluginGeneral(new ZelDLLLoader); }},
    {"work for the end, of the program's own class and of the library's",
     [] {
         ZelCleanUp::Instance().AddAction(new Nothing);
         ZelCleanUp::Instance().AddAction(new ZelFileCleanUpAction("no such file"));
         ZelExitAppEvent("").trigger();
     }},
    {"an object that is counted",
     [] {
         auto* const data = new ZelRegExData(1);
         data->addRef()->removeRef();
         data->removeRef();
     }},
    {"the answer of a receiver, which replaces another one",
     [] {
         ZelFarCallFactory::Instance().registerReceiver(
             "ownership", [](const ZelInputData& in) { return ZelMemBuf(in.data, in.size); });
         ZelMemBuf answer;
         for (int i = 0; i < 2; ++i) {
             ZelFarCallFactory::Instance().call("ownership", ZelInputData(kData, 9), answer);
         }
     }},
};

}  // namespace

TEST(Ownership, WhatIsHandedOutIsAHeapBlockThatTheDocumentedCallReleases) {
    EXPECT_GE(blocksLeftBy([] { (void)ZelCryptoUtils::HexEncode(kData, 9); }), kRounds)
        << "a leak must be seen";
    for (const auto& [call, take, release, isNull] : kHandedOut) {
        SCOPED_TRACE(call);
        void* const taken = take();
        EXPECT_EQ(taken == nullptr, isNull);
        if (taken) {
            EXPECT_TRUE(isOfTheHeap(taken));
        }
        release(taken);
        EXPECT_EQ(blocksLeftBy([take = take, release = release] { release(take()); }), 0);
    }
}

TEST(Ownership, WhatIsHandedInIsReleasedByItsNewOwner) {
    for (const auto& [what, round] : kHandedIn) {
        SCOPED_TRACE(what);
        EXPECT_EQ(blocksLeftBy(round), 0);
    }
}

// It is no heap block: there is a header before it, which `free` would not know.
TEST(Ownership, BlocksOfACacheGoBackToACache) {
    EXPECT_EQ(blocksLeftBy([] {
                  ZelMemCache taking;
                  void* const block = taking.Alloc(100);
                  EXPECT_FALSE(isOfTheHeap(block));
                  ZelMemCache().Free(block);
              }),
              0);
}

// The system has other calls for what it hands out itself.
TEST(Ownership, ObjectsOfTheSystemAreReleasedByItsCalls) {
    HFONT const font = SV::Font().Create();
    EXPECT_EQ(::GetObjectType(font), static_cast<DWORD>(OBJ_FONT));
    EXPECT_TRUE(::DeleteObject(font));
    EXPECT_EQ(::GetObjectType(font), 0U);

    HMENU const menu = SV::Menu().Release();
    EXPECT_TRUE(::IsMenu(menu));
    EXPECT_TRUE(::DestroyMenu(menu));

    HBITMAP const bitmap = ::CreateBitmap(1, 1, 1, 1, nullptr);
    {
        const SV::Bitmap owner(bitmap, {1, 1});
        SV::Bitmap copy;
        copy = owner;
        EXPECT_EQ(copy.GetHandle(), bitmap);
    }
    EXPECT_EQ(::GetObjectType(bitmap), 0U);

    const SV::VirtualDevice device({1, 1});
    HPEN const pen = ::CreatePen(PS_SOLID, 1, 0);
    { const SV::SelectedObject selected(device.GetDC(), pen); }
    EXPECT_EQ(::GetObjectType(pen), 0U);
}
