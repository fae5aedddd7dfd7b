// The block cipher DES, and files of its blocks.

#pragma once

#include <cstdint>
#include <cstdio>

#include "zbasic/zexport.h"

// DES as FIPS 46-3 has it, block by block (ECB). It is here to read and write old files:
// its key of 56 bits is found by trying, and equal blocks stay equal. For new data see
// docs/encryption.md.
//
// Threads: a schedule may be used by any number of threads at a time once it is made; a
// stream by one.

// A key made ready: 32 words for enciphering, the same in reverse order of rounds for
// deciphering. It is the key; whoever made one wipes it.
struct des_ctx {
    std::uint32_t words[64];  // 32 and 32; only this library knows what they mean
};

// Makes a key of 8 bytes ready. The lowest bit of each byte (parity) does not matter.
ZBASIC_API void ades_key(des_ctx* schedule, const unsigned char* key8);

// Enciphers (deciphers) that many blocks of 8 bytes where they lie; none for a count of 0 or less.
ZBASIC_API void ades_enc(des_ctx* schedule, unsigned char* data, int blocks);
ZBASIC_API void ades_dec(des_ctx* schedule, unsigned char* data, int blocks);

// Writes bytes to a file as enciphered blocks, each as soon as it is full. There is nothing
// else in the file. Neither the file (opened as binary, the caller's) nor the schedule is
// owned; a copy goes on from the same bytes into the same file.
// Results: 0, or -1 once an error is set on the file.
class ZBASIC_API des_writer {
public:
    // Writes nothing yet. Neither pointer may be null.
    des_writer(std::FILE* file, des_ctx* schedule) : m_file(file), m_schedule(schedule) {}
    des_writer(const des_writer&) = default;
    des_writer& operator=(const des_writer&) = default;
    ~des_writer();  // wipes the block; a begun one is not written

    // The next byte of the data, or those of a text.
    int put(unsigned char byte) {
        _put(byte);
        return chk();
    }
    int put(const char* text);  // up to its NUL, which is not written

    // Fills a begun block up with spaces, writes it, and flushes the file. The spaces are
    // data to whoever reads. To be called at the end; nothing does it otherwise.
    int flush();

private:
    void _put(unsigned char byte) {
        m_block[m_count++] = byte;
        if (m_count == 8) writeBlock();
    }
    int chk() { return std::ferror(m_file) ? -1 : 0; }
    void writeBlock();

    std::FILE* m_file;
    unsigned char m_block[8] = {};
    std::int32_t m_count = 0;  // bytes in `m_block`
    des_ctx* m_schedule;
};

// Reads such a file. It reads no further than the block that is needed.
class ZBASIC_API des_reader {
public:
    // Reads nothing yet. Neither pointer may be null; file and schedule stay the caller's.
    des_reader(std::FILE* file, des_ctx* schedule) : m_file(file), m_schedule(schedule) {}
    des_reader(const des_reader&) = default;
    des_reader& operator=(const des_reader&) = default;
    ~des_reader();  // wipes the block

    // The next byte, 0 to 255; -1 when the file has no further whole block.
    int get() {
        if (m_count == 0 && !readBlock()) return -1;
        return m_block[8 - m_count--];
    }

private:
    bool readBlock();

    std::FILE* m_file;
    unsigned char m_block[8] = {};
    std::int32_t m_count = 0;  // bytes of `m_block` still to be given
    des_ctx* m_schedule;
};
