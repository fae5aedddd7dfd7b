#include <algorithm>
#include <iterator>

#include "crypt/descipher.h"
#include "crypt/wipe.h"
#include "zbasic/zdes.h"

des_writer::~des_writer() { wipe(m_block, sizeof m_block); }

int des_writer::put(const char* text) {
    for (; text && *text; ++text) _put(static_cast<unsigned char>(*text));
    return chk();
}

int des_writer::flush() {
    if (m_count > 0) {
        std::fill(m_block + m_count, std::end(m_block), static_cast<unsigned char>(' '));
        writeBlock();
    }
    std::fflush(m_file);
    return chk();
}

void des_writer::writeBlock() {
    ades_enc(m_schedule, m_block, 1);
    std::fwrite(m_block, 1, kDesBlock, m_file);  // an error stays set on the file
    m_count = 0;
}

des_reader::~des_reader() { wipe(m_block, sizeof m_block); }

bool des_reader::readBlock() {
    if (std::fread(m_block, 1, kDesBlock, m_file) != kDesBlock) return false;
    ades_dec(m_schedule, m_block, 1);
    m_count = kDesBlock;
    return true;
}
