#include "zbasic/zfarcall.h"

#include <cstring>
#include <utility>

ZelMemBuf::ZelMemBuf() noexcept = default;

ZelMemBuf::ZelMemBuf(const void* data, std::size_t size)
    : m_data(size ? new char[size] : nullptr), m_size(size) {
    if (size) std::memcpy(m_data.get(), data, size);
}

ZelMemBuf::ZelMemBuf(ZelMemBuf&& other) noexcept
    : m_data(std::move(other.m_data)), m_size(std::exchange(other.m_size, 0)) {}

ZelMemBuf& ZelMemBuf::operator=(ZelMemBuf&& other) noexcept {
    if (this == &other) return *this;
    m_data = std::move(other.m_data);
    m_size = std::exchange(other.m_size, 0);
    return *this;
}

ZelMemBuf::~ZelMemBuf() = default;

ZelFarCallFactory& ZelFarCallFactory::Instance() {
    static ZelFarCallFactory factory;
    return factory;
}

ZelFarCallFactory::ZelFarCallFactory() = default;
ZelFarCallFactory::~ZelFarCallFactory() = default;

bool ZelFarCallFactory::registerReceiver(const SV::String& name,
                                         ZelMemBuf (*receiver)(const ZelInputData&)) {
    return m_receivers.try_emplace(name, receiver).second;
}

bool ZelFarCallFactory::call(const SV::String& name, const ZelInputData& input,
                             ZelMemBuf& output) const {
    const auto found = m_receivers.find(name);
    if (found == m_receivers.end() || !found->second) return false;
    output = found->second(input);
    return true;
}
