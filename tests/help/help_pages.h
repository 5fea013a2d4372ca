// The manual's files as the tests of this folder read them.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace veldara {

std::string fileText(const std::filesystem::path& file);

// All pages of the manual, by name.
std::vector<std::string> pageNames();
std::string pageText(const std::string& name);

// What stands between the quotes after each occurrence of the start.
std::vector<std::string> quotedAfter(const std::string& text, const std::string& start);

// Marks taken out, entities resolved, runs of white space made one blank.
std::string plainText(const std::string& html);
std::string withSingleBlanks(const std::string& text);

} // namespace veldara
