// Calls by name between parts of a program that do not link against each other.

#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string_view>

#include "sv/string.h"
#include "zbasic/zexport.h"

// A block of memory with its size in bytes, of which it is the only owner. What the bytes mean is
// agreed on by the two sides of a call. An empty one has a null pointer and size 0.
class ZBASIC_API ZelMemBuf {
public:
    ZelMemBuf() noexcept;
    ZelMemBuf(const void* data, std::size_t size);  // a copy of these bytes; throws `bad_alloc`
    ZelMemBuf(ZelMemBuf&& other) noexcept;          // what was moved from is empty
    // Releases its own bytes and takes those of `other`, which then is empty.
    ZelMemBuf& operator=(ZelMemBuf&& other) noexcept;
    ~ZelMemBuf();

    // The bytes, aligned for any type; valid until this object is assigned to or destroyed. They
    // may be changed, their count may not.
    void* getData() { return m_data.get(); }
    const void* getData() const { return m_data.get(); }

    std::size_t getSize() const { return m_size; }                       // in bytes
    std::string_view getText() const { return {m_data.get(), m_size}; }  // the bytes as they are

private:
    std::unique_ptr<char[]> m_data;
    std::size_t m_size = 0;
};

// What a receiver is asked: bytes that stay the caller's and need only live until the call is over.
struct ZelInputData {
    const void* data = nullptr;  // not owned; may be null when `size` is 0
    std::size_t size = 0;        // in bytes

    ZelInputData() = default;
    // Refers to these bytes or to those of the text, without a copy.
    ZelInputData(const void* bytes, std::size_t count) : data(bytes), size(count) {}
    explicit ZelInputData(std::string_view text) : data(text.data()), size(text.size()) {}

    // The bytes as they are.
    std::string_view getText() const { return {static_cast<const char*>(data), size}; }
};

// The receivers of the process. Names are told apart by their bytes, case included.
// Threads: any thread may be the first to ask for the instance; all else is for the main thread.
class ZBASIC_API ZelFarCallFactory {
public:
    // Gets what is asked and gives the answer, of any size.
    using Receiver = ZelMemBuf (*)(const ZelInputData&);

    // The one of the process: made on first use, released at exit.
    static ZelFarCallFactory& Instance();

    // False when the name is taken: the first receiver stays. There is no way to take it back, so
    // the module of a receiver must stay loaded. A receiver must not throw.
    bool registerReceiver(const SV::String& name, ZelMemBuf (*receiver)(const ZelInputData&));

    // Calls the receiver of that name; its answer replaces what `output` held. False, with `output`
    // as it was, when there is none or it is null. Takes logarithmic time and, but for what the
    // receiver does, no memory. Receivers may call and register others.
    bool call(const SV::String& name, const ZelInputData& input, ZelMemBuf& output) const;

private:
    ZelFarCallFactory();
    ~ZelFarCallFactory();

    std::map<SV::String, Receiver> m_receivers;
};
