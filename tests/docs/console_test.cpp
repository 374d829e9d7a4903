// Runs the commands in the blocks of language "console" of the documents and compares what they print, standard output
// and standard error together, with what stands below them. The commands run in the repository's root. With DALVO_UPDATE
// set, the documents are written anew instead; read the difference.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#ifndef DALVO_CONSOLE_DOCUMENTS
#define DALVO_CONSOLE_DOCUMENTS "README.md", "docs/format.md", "docs/json.md"
#endif

namespace {

std::string printed_by(const std::string &command)
{
    const std::string script = "cd '" DALVO_SOURCE_DIR "' && export COLUMNS=80 PATH='" DALVO_CONFIG_DIR
                               "':\"$PATH\" && {\n" + command + "\n} 2>&1 </dev/null";
    std::string text;
    std::FILE *const pipe = popen(script.c_str(), "r");
    if (pipe == nullptr) {
        return "cannot be run";
    }
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        text += static_cast<char>(c);
    }
    pclose(pipe);
    return text;
}

std::string read_file(const std::string &path)
{
    std::ifstream in(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// The document `text` with what its commands print now.
std::string run_again(const std::string &text)
{
    std::istringstream in(text);
    std::string again;
    bool inside = false;
    bool is_output = false; // the line stands below a command
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("```", 0) == 0) {
            inside = line == "```console";
            is_output = false;
        }
        const bool is_command = inside && line.rfind("$ ", 0) == 0;
        if (is_command || !is_output) {
            again += line + "\n";
        }
        if (is_command) {
            again += printed_by(line.substr(2));
            is_output = true;
        }
    }
    return again;
}

class console : public ::testing::TestWithParam<const char *> {};

TEST_P(console, prints_what_the_document_shows)
{
    const std::string path = std::string(DALVO_SOURCE_DIR "/") + GetParam();
    const std::string expected = read_file(path);
    ASSERT_NE(expected.find("\n```console\n$ "), std::string::npos) << GetParam() << " shows no command";
    const std::string again = run_again(expected);
    if (std::getenv("DALVO_UPDATE") != nullptr) {
        std::ofstream(path, std::ios_base::binary) << again;
    }
    EXPECT_EQ(again, expected);
}

INSTANTIATE_TEST_SUITE_P(documents, console, ::testing::Values(DALVO_CONSOLE_DOCUMENTS));

} // namespace
