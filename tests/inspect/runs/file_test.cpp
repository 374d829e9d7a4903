#include "dalvo/inspect/runs/file.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <ios>
#include <istream>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/odd_buffers.h"
#include "tests/inspect/temporary_folder.h"
#include "tests/support/classic_locale.h"

namespace {

using dalvo::inspect::Contents;
using dalvo::inspect::read_file;
using dalvo::inspect::read_stream;
using dalvo::testing::ClassicCLocale;
using dalvo::testing::PiecewiseBuffer;
using dalvo::testing::state_of;
using dalvo::testing::TemporaryFolder;

constexpr const char *cut = "cannot be read to its end";

/// Each byte there is, over and over.
std::string all_bytes(std::size_t size)
{
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<char>(i % 256);
    }
    return bytes;
}

bool starts_with(const std::string &text, const std::string &start)
{
    return text.compare(0, start.size(), start) == 0;
}

// ---- Files ----------------------------------------------------------------------------------------------------------

TEST(read_file, gives_the_bytes_of_a_file_as_they_are)
{
    const struct {
        std::string bytes;
        const char *why;
    } rows[] = {
        {"random_seed = 7\n", "a text"},
        {"", "empty"},
        {"a", "one byte, without a newline"},
        {"a = 1\r\nb = 2\r\n", "CR LF stays"},
        {std::string("\0a\0\n\0", 5), "NUL, at the ends too"},
        {"\xFF\xFE\x80\xEF\xBB\xBF", "bytes above 0x7F: none is an end, and no mark is dropped"},
        {"\x1A\x04 behind", "bytes that end texts elsewhere"},
        {all_bytes((1 << 14) - 1), "a byte less than is read at once"},
        {all_bytes(1 << 14), "as much as is read at once"},
        {all_bytes((1 << 14) + 1), "a byte more"},
        {all_bytes(1000003), "many blocks"},
    };
    const TemporaryFolder folder;
    for (const auto &row : rows) {
        const Contents contents = read_file(folder.write("a file", row.bytes));
        EXPECT_EQ(contents.bytes, row.bytes) << row.why;
        EXPECT_EQ(contents.error, "") << row.why;
    }
}

TEST(read_file, tells_why_a_file_cannot_be_read)
{
    const ClassicCLocale classic; // the messages are the C library's, in the language of its locale
    const TemporaryFolder folder;
    folder.write("file", "a = 1\n");
    std::filesystem::create_directory(folder.path("folder"));
    std::filesystem::create_directory_symlink(folder.path("folder"), folder.path("link to folder"));
    std::filesystem::create_symlink(folder.path("gone"), folder.path("dangling"));
    std::filesystem::create_symlink(folder.path("loop"), folder.path("loop"));
    const struct {
        std::string path;
        const char *error;
        const char *why;
    } rows[] = {
        {folder.path("gone"), "No such file or directory", "not there"},
        {folder.path("gone/file"), "No such file or directory", "nor its folder"},
        {"", "No such file or directory", "no path"},
        {folder.path("dangling"), "No such file or directory", "a link to nowhere"},
        {folder.path("folder"), "is a folder", "which opens, and cannot be read"},
        {folder.path("folder/"), "is a folder", "the same with a slash"},
        {folder.path("link to folder"), "is a folder", "through a link"},
        {folder.path("file/"), "Not a directory", "a file, called a folder"},
        {folder.path("file/file"), "Not a directory", "a file in place of a folder"},
        {folder.path("loop"), "Too many levels of symbolic links", "a link to itself"},
        {folder.path(std::string(256, 'x')), "File name too long", "a name, by one byte"},
        {std::string(5000, '/'), "File name too long", "a path"},
    };
    for (const auto &row : rows) {
        const Contents contents = read_file(row.path);
        EXPECT_EQ(contents.error, row.error) << row.why;
        EXPECT_EQ(contents.bytes, "") << row.why;
    }
    EXPECT_EQ(read_file(folder.path(std::string(255, 'x'))).error, "No such file or directory") << "a name that fits";
}

TEST(read_file, does_not_take_the_part_of_a_path_before_a_nul_for_the_path)
{
    const TemporaryFolder folder;
    folder.write("file", "a = 1\n");
    const Contents contents = read_file(folder.path(std::string("file\0.cfg", 9)));
    EXPECT_NE(contents.error, "") << "no file can have such a name";
    EXPECT_EQ(contents.bytes, "");
}

TEST(read_file, needs_the_permission_to_read)
{
    const ClassicCLocale classic;
    const TemporaryFolder folder;
    const std::string path = folder.write("file", "a = 1\n");
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    const bool is_root = geteuid() == 0; // whom no permission stops
    const Contents contents = read_file(path);
    EXPECT_EQ(contents.error, is_root ? "" : "Permission denied");
    EXPECT_EQ(contents.bytes, is_root ? "a = 1\n" : "");
}

TEST(read_file, tells_of_a_socket_that_it_is_none)
{
    const ClassicCLocale classic;
    const TemporaryFolder folder;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.path("socket");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const int socket_handle = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(socket_handle, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_EQ(read_file(path).error, "No such device or address");
    close(socket_handle);
}

TEST(read_file, reads_a_named_pipe_until_its_writer_closes_it)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const std::string bytes = all_bytes(200000); // more than a pipe holds at once
    std::thread writer([&] {
        std::ofstream out(path, std::ios_base::binary);
        out << bytes;
    });
    const Contents contents = read_file(path);
    writer.join();
    EXPECT_EQ(contents.bytes, bytes);
    EXPECT_EQ(contents.error, "");
}

TEST(read_file, reads_files_that_have_no_size_and_bytes_all_the_same)
{
    const Contents nothing = read_file("/dev/null");
    EXPECT_EQ(nothing.bytes, "");
    EXPECT_EQ(nothing.error, "");
    const Contents status = read_file("/proc/self/status");
    EXPECT_TRUE(starts_with(status.bytes, "Name:\t")) << status.bytes;
    EXPECT_EQ(status.error, "");
}

TEST(read_file, tells_why_the_reading_fails_on_the_way)
{
    const ClassicCLocale classic;
    const Contents contents = read_file("/proc/self/mem"); // it opens, and there is nothing at address 0
    EXPECT_EQ(contents.error, "Input/output error");
    EXPECT_EQ(contents.bytes, "");
}

/// The size that the file system tells, and the bytes that the file holds.
struct Measured {
    std::size_t size = 0;
    std::string bytes;
};

Measured measured(const char *path)
{
    struct stat status {};
    const int handle = open(path, O_RDONLY | O_CLOEXEC);
    if (handle < 0 || fstat(handle, &status) != 0) {
        return {};
    }
    Measured found{static_cast<std::size_t>(status.st_size), std::string(1 << 16, '\0')};
    const ssize_t size = read(handle, found.bytes.data(), found.bytes.size());
    close(handle);
    found.bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return found;
}

TEST(read_file, tells_that_a_file_ends_before_its_size)
{
    std::size_t found = 0;
    for (const char *path : {"/sys/kernel/mm/transparent_hugepage/enabled", "/sys/devices/system/cpu/possible",
                             "/sys/devices/system/node/possible", "/sys/kernel/profiling"}) {
        const Measured whole = measured(path); // such files are said to have a page, whatever they hold
        if (whole.size > whole.bytes.size()) {
            ++found;
            const Contents contents = read_file(path);
            EXPECT_EQ(contents.error, "is cut short: " + std::to_string(whole.bytes.size()) + " of " +
                                          std::to_string(whole.size) + " bytes could be read");
            EXPECT_EQ(contents.bytes, whole.bytes);
        }
    }
    EXPECT_GT(found, 0U) << "no file here is said to be larger than it is";
}

// ---- Streams --------------------------------------------------------------------------------------------------------

TEST(read_stream, reads_to_the_end_under_every_exception_mask_and_leaves_it)
{
    for (const std::size_t size : {0U, 1U, 6U, (1U << 14U) - 1U, 1U << 14U, 100000U}) {
        for (int mask = 0; mask < 8; ++mask) {
            SCOPED_TRACE(::testing::Message() << size << " bytes, mask " << mask);
            std::istringstream in(all_bytes(size));
            in.exceptions(state_of(mask));
            Contents contents;
            ASSERT_NO_THROW(contents = read_stream(in));
            EXPECT_TRUE(contents.bytes == all_bytes(size)) << contents.bytes.size() << " bytes were read";
            EXPECT_EQ(contents.error, "");
            EXPECT_EQ(in.exceptions(), state_of(mask));
        }
    }
}

TEST(read_stream, joins_what_comes_in_pieces)
{
    for (const std::size_t size : {1U, 7U, 4096U}) {
        PiecewiseBuffer buffer(all_bytes(50000), size, [] {});
        std::istream in(&buffer);
        const Contents contents = read_stream(in);
        EXPECT_TRUE(contents.bytes == all_bytes(50000)) << size;
        EXPECT_EQ(contents.error, "") << size;
    }
}

TEST(read_stream, reads_on_from_where_the_stream_stands)
{
    std::istringstream in("a = 1\nb = 2\n");
    std::string line;
    std::getline(in, line);
    EXPECT_EQ(read_stream(in).bytes, "b = 2\n");
    std::istringstream at_end("a");
    at_end.setstate(std::ios_base::eofbit);
    const Contents nothing = read_stream(at_end);
    EXPECT_EQ(nothing.bytes, "");
    EXPECT_EQ(nothing.error, "") << "a stream at its end is whole";
}

TEST(read_stream, tells_of_a_stream_that_has_failed_before)
{
    std::ifstream not_there("no/such/folder/file");
    EXPECT_EQ(read_stream(not_there).error, cut);
    std::istream without_buffer(nullptr);
    EXPECT_EQ(read_stream(without_buffer).error, cut);
    for (const int state : {1, 2, 3}) {
        for (int mask = 0; mask < 8; ++mask) {
            SCOPED_TRACE(::testing::Message() << "state " << state << ", mask " << mask);
            std::istringstream in("a = 1\n");
            in.setstate(state_of(state));
            try {
                in.exceptions(state_of(mask));
            } catch (const std::ios_base::failure &) { // the mask is set nevertheless
                EXPECT_EQ(in.exceptions(), state_of(mask));
            }
            Contents contents;
            ASSERT_NO_THROW(contents = read_stream(in));
            EXPECT_EQ(contents.error, cut);
            EXPECT_EQ(contents.bytes, "");
            EXPECT_EQ(in.exceptions(), state_of(mask));
        }
    }
}

TEST(read_stream, tells_of_a_stream_that_fails_on_the_way_whatever_exception_its_buffer_throws)
{
    const struct {
        std::function<void()> failure;
        const char *why;
    } failures[] = {
        {[] { throw std::runtime_error("device gone"); }, "a runtime_error"},
        {[] { throw std::ios_base::failure("device gone"); }, "a failure of the stream library"},
    };
    for (const auto &row : failures) {
        for (const std::size_t size : {0U, 6U, 100000U}) {
            for (int mask = 0; mask < 8; ++mask) {
                SCOPED_TRACE(::testing::Message() << row.why << " behind " << size << " bytes, mask " << mask);
                PiecewiseBuffer buffer(all_bytes(size), 4096, row.failure);
                std::istream in(&buffer);
                in.exceptions(state_of(mask));
                Contents contents;
                EXPECT_NO_THROW(contents = read_stream(in));
                EXPECT_EQ(contents.error, cut);
                EXPECT_TRUE(starts_with(all_bytes(size), contents.bytes)) << "what was read is a beginning";
                EXPECT_EQ(in.exceptions(), state_of(mask));
            }
        }
    }
}

TEST(read_stream, passes_on_what_is_no_exception_of_the_library)
{
    for (int mask = 0; mask < 8; ++mask) {
        PiecewiseBuffer buffer("a = 1\n", 4, [] { throw 7; });
        std::istream in(&buffer);
        in.exceptions(state_of(mask));
        EXPECT_THROW(read_stream(in), int) << mask;
        EXPECT_EQ(in.exceptions(), state_of(mask));
    }
}

TEST(read_stream, passes_on_that_memory_ran_out_in_the_buffer)
{
    for (int mask = 0; mask < 8; ++mask) {
        SCOPED_TRACE(mask);
        PiecewiseBuffer buffer("a = 1\n", 4, [] { throw std::bad_alloc(); });
        std::istream in(&buffer);
        in.exceptions(state_of(mask));
        EXPECT_THROW(read_stream(in), std::bad_alloc);
        EXPECT_EQ(in.exceptions(), state_of(mask));
    }
}

} // namespace
