/// @file
/// @brief Reads the test tables of tests/data/: one case a line, tab-separated fields; lines
/// starting with "#" and empty lines are comments. A line of tabs alone is a case of empty
/// fields.
#pragma once

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Text.h"

namespace fntest {

struct TableRow {
    std::size_t line = 0;             ///< its line number, for messages
    std::vector<std::string> fields;  ///< as written (UTF-8)
    std::string at;                   ///< "table:line", for messages
};

/// The cases of tests/data/`name`, each with at least `minFields` fields. Throws when the file is
/// missing or a case is short, so that a test never passes over a broken table.
inline std::vector<TableRow> readTable(const std::string& name, std::size_t minFields) {
    const std::string path = std::string(FNET_TEST_TABLES_DIR) + "/" + name;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open table " + path);
    }
    std::vector<TableRow> rows;
    std::string text;
    for (std::size_t number = 1; std::getline(in, text); ++number) {
        if (text.empty() || text[0] == '#') {
            continue;
        }
        TableRow row{number, {}, name + ":" + std::to_string(number)};
        std::size_t start = 0;
        for (std::size_t tab = text.find('\t'); tab != std::string::npos;
             start = tab + 1, tab = text.find('\t', start)) {
            row.fields.push_back(text.substr(start, tab - start));
        }
        row.fields.push_back(text.substr(start));
        if (row.fields.size() < minFields) {
            throw std::runtime_error(path + ":" + std::to_string(number) + ": fewer than " +
                                     std::to_string(minFields) + " fields");
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

/// A field as UTF-16, where "\uXXXX" stands for the one unit of that value (a control character,
/// or a lone surrogate that UTF-8 cannot carry).
inline std::u16string unescaped(const std::string& field) {
    std::u16string text = u16(field);
    for (std::size_t at = text.find(u"\\u"); at != std::u16string::npos;
         at = text.find(u"\\u", at + 1)) {
        const std::string hex(text.begin() + at + 2, text.begin() + at + 6);
        text.replace(at, 6, 1, static_cast<char16_t>(std::strtoul(hex.c_str(), nullptr, 16)));
    }
    return text;
}

}  // namespace fntest
