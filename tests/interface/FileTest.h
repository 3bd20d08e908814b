// What tests of opening and saving share.
#pragma once

#include "support/OxdTest.h"

namespace fs = std::filesystem;

inline constexpr std::string_view emptyFile = "[DataSet]\r\nVersion=2\r\nGroupCount=0\r\nInfoSetCount=0\r\n\r\n#!";

class FileTest : public OxdTest
{
protected:
    // The diagnostic of a file-open failure.
    static void ExpectOpenFailure(const std::string& path, int error, const std::string& function)
    {
        const std::string text = VELGetLastError();
        EXPECT_NE(text.find("CVELFileOpenException"), std::string::npos) << text;
        EXPECT_NE(text.find("Throw in function " + function), std::string::npos) << text;
        EXPECT_NE(text.find("errinfo_errno_*] = " + std::to_string(error) + ","), std::string::npos) << text;
        EXPECT_NE(text.find("errinfo_api_function_*] = open"), std::string::npos) << text;
        EXPECT_NE(text.find("tag_filename*] = " + path + "\n"), std::string::npos) << text;
    }
};
