// Follows the links of the documents, those to places outside of the repository excepted.

#include <cctype>
#include <cstddef>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/golden.h"

namespace {

namespace fs = std::filesystem;
using dalvo::testing::source_lines;
using dalvo::testing::source_path;

/// The documents, from the repository's root.
std::vector<std::string> documents()
{
    std::vector<std::string> found;
    for (const char *folder : {".", "docs"}) {
        for (const auto &entry : fs::directory_iterator(source_path(folder))) {
            if (entry.path().extension() == ".md") {
                found.push_back((fs::path(folder) / entry.path().filename()).lexically_normal().string());
            }
        }
    }
    return found;
}

/// The lines of a document without its blocks of code.
std::vector<std::string> prose_of(const std::string &document)
{
    std::vector<std::string> prose;
    bool inside = false;
    for (const std::string &line : source_lines(document)) {
        if (line.find("```") == line.find_first_not_of(' ') && line.find("```") != std::string::npos) {
            inside = !inside;
        } else if (!inside) {
            prose.push_back(line);
        }
    }
    return prose;
}

/// What a link calls a heading: in lower case, blanks as hyphens, without punctuation.
std::string anchor_of(const std::string &heading)
{
    std::string anchor;
    for (const char c : heading) {
        if (c == ' ' || c == '-') {
            anchor += '-';
        } else if (std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_') {
            anchor += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return anchor;
}

std::set<std::string> anchors_of(const std::string &document)
{
    std::set<std::string> anchors;
    for (const std::string &line : prose_of(document)) {
        const std::size_t hashes = line.find_first_not_of('#');
        if (hashes != 0 && hashes != std::string::npos && line[hashes] == ' ') {
            anchors.insert(anchor_of(line.substr(hashes + 1)));
        }
    }
    return anchors;
}

TEST(documents, have_links_that_lead_somewhere)
{
    const std::regex link("\\]\\(([^)#]*)(#([^)]*))?\\)");
    std::size_t followed = 0;
    for (const std::string &document : documents()) {
        for (const std::string &line : prose_of(document)) {
            for (std::sregex_iterator at(line.begin(), line.end(), link), end; at != end; ++at) {
                const std::string target = (*at)[1];
                const std::string anchor = (*at)[3];
                if (target.rfind("https://", 0) == 0) {
                    continue;
                }
                const fs::path path = (fs::path(document).parent_path() / target).lexically_normal();
                const std::string linked = target.empty() ? document : path.string();
                ASSERT_TRUE(fs::exists(source_path(linked))) << document << ": there is no " << linked;
                EXPECT_TRUE(anchor.empty() || anchors_of(linked).count(anchor) == 1)
                    << document << ": no heading of " << linked << " is #" << anchor;
                ++followed;
            }
        }
    }
    EXPECT_GT(followed, 0U);
}

} // namespace
