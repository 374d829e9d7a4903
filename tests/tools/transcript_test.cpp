// Runs the commands of tests/tools/transcripts/*.txt and compares what they do with what stands there.
//
// A transcript is a sequence of commands, each followed by what it did:
//
//     # a comment
//     $ dalvo-config show bad.cfg
//     out: a line of standard output
//     err: a line of standard error
//     exit: 1
//
// A last line without a line end is written as "out~ text" or "err~ text". Commands are run by the shell in
// tests/tools/files. With DALVO_UPDATE set, the transcripts are written anew instead; read the difference.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

const fs::path source_dir = DALVO_SOURCE_DIR;

std::string read_file(const fs::path &path)
{
    std::ifstream in(path, std::ios_base::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string marked_lines(const std::string &mark, const std::string &text)
{
    std::string lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string line = text.substr(start, end - start);
        lines += mark + (end == text.size() ? "~" : ":") + (line.empty() ? "" : " ") + line + "\n";
        start = end + 1;
    }
    return lines;
}

/// What `command` does, as a transcript writes it.
std::string run(const std::string &command, const fs::path &scratch)
{
    const fs::path out = scratch / "out";
    const fs::path err = scratch / "err";
    const std::string script = "cd '" + (source_dir / "tests/tools/files").string() + "' && export PATH='" +
                               DALVO_CONFIG_DIR "':\"$PATH\" COLUMNS=80 TMPDIR='" + scratch.string() + "' && {\n" + command +
                               "\n} >'" + out.string() + "' 2>'" + err.string() + "' </dev/null";
    const int status = std::system(script.c_str());
    return "$ " + command + "\n" + marked_lines("out", read_file(out)) + marked_lines("err", read_file(err)) +
           "exit: " + std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)) + "\n";
}

/// The transcript `text` as its commands, run now, make it.
std::string run_again(const std::string &text, const fs::path &scratch)
{
    std::istringstream in(text);
    std::string again;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("$ ", 0) == 0) {
            again += run(line.substr(2), scratch);
        } else if (line.empty() || line.front() == '#') {
            again += line + "\n";
        }
    }
    return again;
}

std::vector<std::string> transcripts()
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(source_dir / "tests/tools/transcripts")) {
        names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class transcript : public ::testing::TestWithParam<std::string> {};

TEST_P(transcript, repeats)
{
    const fs::path path = source_dir / "tests/tools/transcripts" / (GetParam() + ".txt");
    const fs::path scratch = fs::path(::testing::TempDir()) / ("dalvo_transcript_" + GetParam() + "_" + std::to_string(getpid()));
    fs::create_directories(scratch);
    const std::string expected = read_file(path);
    const std::string again = run_again(expected, scratch);
    fs::remove_all(scratch);
    if (std::getenv("DALVO_UPDATE") != nullptr) {
        std::ofstream(path, std::ios_base::binary) << again;
    }
    ASSERT_NE(expected.find("\n$ "), std::string::npos) << "a transcript without a command tests nothing";
    EXPECT_EQ(again, expected);
}

INSTANTIATE_TEST_SUITE_P(dalvo_config, transcript, ::testing::ValuesIn(transcripts()),
                         [](const auto &test) { return test.param; });

} // namespace
