#include "bench/loaders.h"

#include <CLI/CLI.hpp>
#include <SimpleIni.h>
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <glib.h>
#include <ini.h>

#include <cstring>
#include <string_view>
#include <unordered_map>

#include "dalvo/configuration/configurationsetter.h"

namespace dalvo::bench {

namespace {

using Input = std::shared_ptr<const InputText>;
using PlainTable = std::unordered_map<std::string, std::vector<Assignment>>;

constexpr const char *wrong = "the table does not hold what the text says";

// ---- dalvo

using Setter = std::unique_ptr<ConfigurationSetter>;

Contender dalvo_loader(const Input &input)
{
    return making(
        "dalvo",
        [input] {
            auto setter = std::make_unique<ConfigurationSetter>();
            MemoryStream stream(input->text);
            setter->load(stream, 0);
            return setter;
        },
        [input](const Setter &setter) {
            require(setter->sections().size() == input->sections.size() + 1, wrong); // the unnamed section, too
            for (const InputSection &section : input->sections) {
                const auto *const found = setter->sections().find(section.name);
                require(found != nullptr, wrong);
                const auto &entries = *found;
                require(entries.size() == section.assignments.size(), wrong);
                for (std::size_t i = 0; i < entries.size(); ++i) {
                    require(Assignment(entries[i].name, entries[i].value) == section.assignments[i], wrong);
                }
            }
        });
}

// ---- inih, and by hand

void require_table(const InputText &input, const PlainTable &table)
{
    require(table.size() == input.sections.size(), wrong);
    for (const InputSection &section : input.sections) {
        require(table.at(section.name) == section.assignments, wrong);
    }
}

Contender inih_loader(const Input &input)
{
    return making(
        "inih",
        [input] {
            PlainTable table;
            const auto store = [](void *to, const char *section, const char *name, const char *value) {
                (*static_cast<PlainTable *>(to))[section].emplace_back(name, value);
                return 1;
            };
            require(ini_parse_string(input->text.c_str(), store, &table) == 0, "a line was refused");
            return table;
        },
        [input](const PlainTable &table) { require_table(*input, table); });
}

std::string_view trimmed(std::string_view text)
{
    const auto is_space = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!text.empty() && is_space(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_space(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

PlainTable read_by_hand(std::istream &in)
{
    PlainTable table;
    std::vector<Assignment> *section = &table[""];
    std::string line;
    while (std::getline(in, line)) {
        const std::string_view text = trimmed(line);
        if (text.empty() || text.front() == '#') {
            continue;
        }
        if (text.front() == '[') {
            section = &table[std::string(trimmed(text.substr(1, text.size() - 2)))];
            continue;
        }
        const std::size_t equals = text.find('=');
        section->emplace_back(trimmed(text.substr(0, equals)), trimmed(text.substr(equals + 1)));
    }
    return table;
}

Contender hand_loader(const Input &input)
{
    return making(
        "by hand",
        [input] {
            MemoryStream stream(input->text);
            return read_by_hand(stream);
        },
        [input](PlainTable table) {
            require(table.erase("") == 1, wrong);
            require_table(*input, table);
        });
}

// ---- SimpleIni

using SimpleIni = std::unique_ptr<CSimpleIniCaseA>;

Contender simpleini_loader(const Input &input)
{
    return making(
        "SimpleIni",
        [input] {
            constexpr bool is_utf8 = false;
            constexpr bool multi_key = true; // keeps every assignment
            auto ini = std::make_unique<CSimpleIniCaseA>(is_utf8, multi_key);
            require(ini->LoadData(input->text.data(), input->text.size()) == SI_OK, "not read");
            return ini;
        },
        [input](const SimpleIni &ini) {
            for (const InputSection &section : input->sections) {
                std::unordered_map<std::string, std::vector<std::string>> values;
                for (const auto &[name, value] : section.assignments) {
                    values[name].push_back(value);
                }
                for (const auto &[name, expected] : values) {
                    CSimpleIniCaseA::TNamesDepend found;
                    require(ini->GetAllValues(section.name.c_str(), name.c_str(), found), wrong);
                    found.sort(CSimpleIniCaseA::Entry::LoadOrder());
                    require(found.size() == expected.size(), wrong);
                    require(found.back().pItem == expected.back(), wrong);
                }
            }
        });
}

// ---- GLib

struct FreeKeyFile {
    void operator()(GKeyFile *file) const { g_key_file_free(file); }
};
using KeyFile = std::unique_ptr<GKeyFile, FreeKeyFile>;

Contender gkeyfile_loader(const Input &input)
{
    return making(
        "GKeyFile",
        [input] {
            KeyFile file(g_key_file_new());
            require(g_key_file_load_from_data(file.get(), input->text.data(), input->text.size(), G_KEY_FILE_NONE,
                                              nullptr) == TRUE,
                    "not read");
            return file;
        },
        [input](const KeyFile &file) {
            for (const InputSection &section : input->sections) {
                const auto &[name, value] = section.assignments.back();
                const std::unique_ptr<char, void (*)(void *)> found(
                    g_key_file_get_value(file.get(), section.name.c_str(), name.c_str(), nullptr), g_free);
                require(found != nullptr && value == found.get(), wrong);
            }
        });
}

// ---- Boost.PropertyTree

using Tree = boost::property_tree::ptree;

Contender propertytree_loader(const Input &input)
{
    return making(
        "Boost.PropertyTree",
        [input] {
            Tree tree;
            MemoryStream stream(input->text);
            boost::property_tree::read_ini(stream, tree);
            return tree;
        },
        [input](const Tree &tree) {
            require(tree.size() == input->sections.size(), wrong);
            auto at = tree.begin();
            for (const InputSection &section : input->sections) {
                require(at->first == section.name && at->second.size() == section.assignments.size(), wrong);
                auto expected = section.assignments.begin();
                for (const auto &[name, value] : at->second) {
                    require(name == expected->first && value.data() == expected->second, wrong);
                    ++expected;
                }
                ++at;
            }
        });
}

// ---- CLI11

using Items = std::vector<CLI::ConfigItem>;

Contender cli11_loader(const Input &input)
{
    class Reader : public CLI::ConfigINI {
    public:
        Reader() { parentSeparatorChar = '/'; } // a dot is part of an option's name
    };
    return making(
        "CLI11",
        [input] {
            MemoryStream stream(input->text);
            return Reader().from_config(stream);
        },
        [input](const Items &items) {
            auto at = items.begin();
            const auto next = [&] {
                while (at != items.end() && (at->name == "++" || at->name == "--")) {
                    ++at;
                }
                require(at != items.end(), wrong);
                return at++;
            };
            for (const InputSection &section : input->sections) {
                for (const auto &[name, value] : section.assignments) {
                    const auto item = next();
                    require(item->parents == std::vector<std::string>{section.name}, wrong);
                    require(item->name == name && item->inputs == std::vector<std::string>{value}, wrong);
                }
            }
        });
}

// ---- floors

/// Finds the ends of the lines and copies each name and value into one block.
Contender scan_and_copy(const Input &input)
{
    struct Copied {
        std::unique_ptr<char[]> block;
        std::size_t size = 0;
    };
    return making(
        "scan and copy",
        [input] {
            Copied copied{std::unique_ptr<char[]>(new char[input->text.size()]), 0};
            const auto copy = [&](const char *begin, const char *end) {
                std::memcpy(copied.block.get() + copied.size, begin, static_cast<std::size_t>(end - begin));
                copied.size += static_cast<std::size_t>(end - begin);
            };
            const char *line = input->text.data();
            const char *const text_end = line + input->text.size();
            while (line != text_end) {
                const auto *const end =
                    static_cast<const char *>(std::memchr(line, '\n', static_cast<std::size_t>(text_end - line)));
                if (*line == '[') {
                    copy(line + 1, end - 1);
                } else {
                    const auto *const equals =
                        static_cast<const char *>(std::memchr(line, '=', static_cast<std::size_t>(end - line)));
                    copy(line, equals - 1);
                    copy(equals + 2, end);
                }
                line = end + 1;
            }
            return copied;
        },
        [input](const Copied &copied) {
            std::string expected;
            for (const InputSection &section : input->sections) {
                expected += section.name;
                for (const auto &[name, value] : section.assignments) {
                    expected += name + value;
                }
            }
            require(std::string_view(copied.block.get(), copied.size) == expected, wrong);
        });
}

Contender getline_alone(const Input &input)
{
    return making(
        "getline alone",
        [input] {
            MemoryStream stream(input->text);
            std::size_t bytes = 0;
            std::string line;
            while (std::getline(stream, line)) {
                bytes += line.size() + 1;
            }
            return bytes;
        },
        [input](std::size_t bytes) { require(bytes == input->text.size(), "bytes are missing"); });
}

} // namespace

bool names_an_option_twice(const InputText &input)
{
    for (const InputSection &section : input.sections) {
        if (section.assignments.size() > catalogue().size()) {
            return true;
        }
    }
    return false;
}

std::vector<Contender> loaders(const Input &input)
{
    std::vector<Contender> all{dalvo_loader(input), inih_loader(input), simpleini_loader(input),
                               gkeyfile_loader(input)};
    if (!names_an_option_twice(*input)) {
        all.push_back(propertytree_loader(input));
    }
    all.push_back(cli11_loader(input));
    all.push_back(hand_loader(input));
    all.push_back(scan_and_copy(input));
    all.push_back(getline_alone(input));
    return all;
}

} // namespace dalvo::bench
