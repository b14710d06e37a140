// Reading the desktop program's INI settings file.
#include "core/settings_file.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace zv {

namespace {

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Section and key names: "%20" and the like decoded, "\" a level of the path.
std::string decodeName(std::string_view s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '%' && i + 2 < s.size() && hexValue(s[i + 1]) >= 0 && hexValue(s[i + 2]) >= 0) {
      out += static_cast<char>(hexValue(s[i + 1]) * 16 + hexValue(s[i + 2]));
      i += 2;
    } else {
      out += s[i] == '\\' ? '/' : s[i];
    }
  }
  return out;
}

std::string_view trim(std::string_view s) {
  const auto first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(" \t") - first + 1);
}

// Appends the character of a "\x..." escape (a UTF-16 code unit) as UTF-8.
void appendCodePoint(std::string& out, unsigned cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

// A value: quoted stretches keep their blanks, C escapes are decoded, and a comma
// outside quotes parts the items of a list (given back joined by ", "). A leading
// "@@" stands for "@".
std::string decodeValue(std::string_view v) {
  std::string out;
  bool quoted = false;
  for (std::size_t i = 0; i < v.size(); ++i) {
    const char c = v[i];
    if (c == '"') {
      quoted = !quoted;
    } else if (c == '\\' && i + 1 < v.size()) {
      const char e = v[++i];
      switch (e) {
        case 'n': out += '\n'; break;
        case 'r': out += '\r'; break;
        case 't': out += '\t'; break;
        case 'a': out += '\a'; break;
        case 'b': out += '\b'; break;
        case 'f': out += '\f'; break;
        case 'v': out += '\v'; break;
        case '0': out += '\0'; break;
        case 'x': {
          unsigned cp = 0;
          while (i + 1 < v.size() && hexValue(v[i + 1]) >= 0) cp = cp * 16 + static_cast<unsigned>(hexValue(v[++i]));
          appendCodePoint(out, cp);
          break;
        }
        default: out += e; break;  // \" \' \\ \?
      }
    } else if (c == ',' && !quoted) {
      out += ", ";
      while (i + 1 < v.size() && v[i + 1] == ' ') ++i;
    } else {
      out += c;
    }
  }
  if (out.starts_with("@@")) out.erase(0, 1);
  return out;
}

}  // namespace

std::string SettingsFile::DefaultPath() {
  if (const char* file = std::getenv("ZORVANTA_SETTINGS"); file != nullptr && *file != '\0') return file;
  std::string base;
  if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg != nullptr && *xdg != '\0')
    base = xdg;
  else if (const char* home = std::getenv("HOME"); home != nullptr)
    base = std::string(home) + "/.config";
  return base + "/quidlane/quidlane.ini";
}

SettingsFile::SettingsFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return;
  std::ostringstream text;
  text << in.rdbuf();
  parse(text.str());
}

SettingsFile SettingsFile::FromText(std::string_view text) {
  SettingsFile f;
  f.parse(text);
  return f;
}

void SettingsFile::parse(std::string_view text) {
  std::string section;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = trim(line);
    if (line.empty() || line.front() == ';' || line.front() == '#') continue;
    if (line.front() == '[') {
      section = decodeName(line.substr(1, line.find(']') - 1));
      // The toolkit's own section for keys without one.
      if (section == "General") section.clear();
      continue;
    }
    const std::size_t eq = line.find('=');
    if (eq == std::string_view::npos) continue;
    const std::string key = decodeName(trim(line.substr(0, eq)));
    values_[section.empty() ? key : section + "/" + key] = decodeValue(trim(line.substr(eq + 1)));
  }
}

std::optional<std::string> SettingsFile::value(std::string_view section, std::string_view key) const {
  const auto it = values_.find(section.empty() ? std::string(key) : std::string(section) + "/" + std::string(key));
  if (it == values_.end()) return std::nullopt;
  return it->second;
}

}  // namespace zv
