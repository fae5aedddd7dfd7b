#include <gtest/gtest.h>

#include "crypt/vectors.h"
#include "support/temp_dir.h"
#include "zbasic/zdbuser.h"

#include <windows.h>

TEST(DBUserLocked, CannotBeOpened) {
    const TempDir folder;
    const std::string path = folder.write("user.txt", taken(ZelCryptoUtils::AESEncrypt("a\nb\nc")));
    const HANDLE lock = ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    {
        ZelDBUserUtils utils(path.c_str());
        EXPECT_FALSE(utils.IsExternalDefined());
        EXPECT_EQ(utils.GetDBUserName("fallback"), "");
    }
    ::CloseHandle(lock);
    EXPECT_EQ(ZelDBUserUtils(path.c_str()).GetDBUserName(""), "b");
}
