// Runs the commands in the blocks of language "console" of the documents and compares what they print, standard output
// and standard error together, with what stands below them. The commands run in the repository's root.

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#ifndef DALVO_CONSOLE_DOCUMENTS
#define DALVO_CONSOLE_DOCUMENTS "README.md", "docs/format.md", "docs/json.md"
#endif

namespace {

/// A command of a document and what the document says that it prints.
struct Session {
    std::string command;
    std::string printed;
};

std::vector<Session> sessions_of(const std::string &document)
{
    std::ifstream in(std::string(DALVO_SOURCE_DIR "/") + document);
    std::vector<Session> sessions;
    bool inside = false;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("```", 0) == 0) {
            inside = line == "```console";
        } else if (inside && line.rfind("$ ", 0) == 0) {
            sessions.push_back({line.substr(2), ""});
        } else if (inside && !sessions.empty()) {
            sessions.back().printed += line + "\n";
        }
    }
    return sessions;
}

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

class console : public ::testing::TestWithParam<const char *> {};

TEST_P(console, prints_what_the_document_shows)
{
    const std::vector<Session> sessions = sessions_of(GetParam());
    ASSERT_FALSE(sessions.empty()) << GetParam() << " shows no command";
    for (const Session &session : sessions) {
        EXPECT_EQ(printed_by(session.command), session.printed) << GetParam() << ": " << session.command;
    }
}

INSTANTIATE_TEST_SUITE_P(documents, console, ::testing::Values(DALVO_CONSOLE_DOCUMENTS));

} // namespace
