// A spreadsheet's reading of CSV, for the tests of the CSV export.
#pragma once

#include <string>
#include <vector>

namespace zv::test {

// Rows of cells. Quoted cells may hold commas, doubled quotes and line ends; rows end
// at CR LF outside quotes. A last CR LF closes the last row.
inline std::vector<std::vector<std::string>> ReadCsv(const std::string& text) {
  std::vector<std::vector<std::string>> rows(1, std::vector<std::string>(1));
  bool quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char ch = text[i];
    if (quoted) {
      if (ch == '"' && i + 1 < text.size() && text[i + 1] == '"') {
        rows.back().back() += '"';
        ++i;
      } else if (ch == '"') {
        quoted = false;
      } else {
        rows.back().back() += ch;
      }
    } else if (ch == '"') {
      quoted = true;
    } else if (ch == ',') {
      rows.back().emplace_back();
    } else if (ch == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      ++i;
      if (i + 1 < text.size()) rows.emplace_back(1);
    } else {
      rows.back().back() += ch;
    }
  }
  return rows;
}

}  // namespace zv::test
