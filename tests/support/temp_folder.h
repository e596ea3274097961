// A fresh folder made the current one for a test, removed afterwards; file helpers inside it.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tessaly::test {

class InFolder : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_before = std::filesystem::current_path();
        char pattern[] = "/tmp/tessaly-files-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        m_folder = pattern;
        std::filesystem::current_path(m_folder);
    }
    void TearDown() override
    {
        std::filesystem::current_path(m_before);
        std::filesystem::remove_all(m_folder);
    }

    // The bytes of a file in the folder; "<missing>" when it cannot be read.
    std::string fileBytes(const std::string& name) const
    {
        std::ifstream file(m_folder / name, std::ios::binary);
        std::stringstream contents;
        contents << file.rdbuf();
        return file ? contents.str() : "<missing>";
    }
    void writeFile(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
    }

    std::filesystem::path m_before;
    std::filesystem::path m_folder;
};

} // namespace tessaly::test
