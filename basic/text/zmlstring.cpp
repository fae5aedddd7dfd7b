#include "zbasic/zmlstring.h"

#include <string_view>

#include "text/mlcontainer.h"

namespace {

const ZelLanguageContainer& container() { return ZelLanguageContainer::Instance(); }

std::string_view viewOf(const char* text) { return text ? text : std::string_view(); }

}  // namespace

void Zel_DeinitializeMultiLanguageStrings() { ZelLanguageContainer::Instance().clear(); }

SV::String Zel_MultiLangGet(unsigned short resId, const unsigned short& language) {
    return container().text(resId, language);
}

bool Zel_MultiLangEquals(const SV::String& text, unsigned short resId, int* length) {
    return container().equals(text, resId, length);
}

bool Zel_MultiLangEquals(const char* text, unsigned short resId, int* length) {
    return container().equals(viewOf(text), resId, length);
}

bool Zel_MultiLangStartsWith(const SV::String& text, unsigned short resId, int* length) {
    return container().startsWith(text, resId, length);
}

bool Zel_MultiLangStartsWith(const char* text, unsigned short resId, int* length) {
    return container().startsWith(viewOf(text), resId, length);
}

int Zel_MultiLangSearchForAny(const SV::String& text, unsigned short resId, int* length) {
    return container().searchForAny(text, resId, length);
}

unsigned short Zel_MultiLangFindResId(const SV::String& text) { return container().findId(text); }

unsigned short Zel_MultiLangFindResId(const char* text) { return container().findId(viewOf(text)); }
