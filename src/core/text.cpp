// String primitives on single-byte text: tests, counts, in-place changes and time.
#include "core/text.h"

#include <limits>

#include "core/error.h"

namespace zv {

namespace {

// Text lengths and positions fit in 32 bits wherever the callers use them: lines are
// at most a few thousand characters.
int32_t pos32(std::size_t n) { return static_cast<int32_t>(n); }

unsigned char byteOf(char c) { return static_cast<unsigned char>(c); }

// A field of a time text: leading blanks skipped, then digits; anything else
// ends the field, so "12a" is 12 and "xx" is 0. Saturates rather than wrap.
int64_t fieldValue(std::string_view field) {
  std::size_t i = 0;
  while (i < field.size() && field[i] == ' ') ++i;
  int64_t v = 0;
  for (; i < field.size() && field[i] >= '0' && field[i] <= '9'; ++i) {
    v = v * 10 + (field[i] - '0');
    if (v > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  }
  return v;
}

void appendTwoDigits(std::string& out, int64_t v) {
  if (v < 10) out.push_back('0');
  out += std::to_string(v);
}

}  // namespace

int32_t Blanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return pos32(first == std::string_view::npos ? text.size() : first);
}

int32_t InCount(std::string_view text, std::string_view sought) {
  if (sought.empty()) return 0;
  int32_t count = 0;
  for (std::size_t p = text.find(sought); p != std::string_view::npos; p = text.find(sought, p + sought.size()))
    ++count;
  return count;
}

int32_t InCountTbl(std::string_view text, std::string_view table) {
  bool inTable[256] = {};
  for (char c : table) inTable[byteOf(c)] = true;
  int32_t count = 0;
  for (char c : text) count += inTable[byteOf(c)] ? 1 : 0;
  return count;
}

int32_t InstrTbl(int32_t start, std::string_view text, std::string_view table) {
  if (start < 1) start = 1;
  if (static_cast<std::size_t>(start) > text.size()) return 0;
  const std::size_t p = text.find_first_of(table, static_cast<std::size_t>(start - 1));
  return p == std::string_view::npos ? 0 : pos32(p + 1);
}

std::string QPTrim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string ParseString(int32_t& position, std::string_view text, std::string_view delimiters) {
  if (position < 1 || static_cast<std::size_t>(position) > text.size()) {
    position = 0;
    return {};
  }
  const std::size_t from = static_cast<std::size_t>(position - 1);
  const std::size_t end = text.find_first_of(delimiters, from);
  if (end == std::string_view::npos) {
    position = 0;
    return std::string(text.substr(from));
  }
  // A delimiter as the last character leaves nothing behind it: the text is used up.
  position = end + 1 < text.size() ? pos32(end + 2) : 0;
  return std::string(text.substr(from, end - from));
}

void LowAscii(std::string& text) {
  for (char& c : text) c = static_cast<char>(byteOf(c) & 0x7F);
}

void RemCtrl(std::string& text, std::string_view replacement) {
  // An empty replacement stands for character 0, so the text keeps its length.
  const char with = replacement.empty() ? '\0' : replacement.front();
  // A select rather than a branch, so the loop vectorizes: every line passes here.
  for (char& c : text) c = byteOf(c) < 32 ? with : c;
}

void ReplaceChar(std::string& text, std::string_view oldChar, std::string_view newChar) {
  if (oldChar.empty() || newChar.empty()) return;
  const char from = oldChar.front();
  const char to = newChar.front();
  for (char& c : text)
    if (c == from) c = to;
}

int32_t Time2Num(std::string_view text) {
  std::size_t lead = 0;
  while (lead < text.size() && text[lead] == ' ') ++lead;
  text.remove_prefix(lead);
  // Num2Time writes a job that crossed midnight with a leading "-"; read it back.
  const bool negative = !text.empty() && text.front() == '-';
  if (negative) text.remove_prefix(1);

  int64_t fields[3] = {0, 0, 0};
  for (int64_t& field : fields) {
    const std::size_t colon = text.find(':');
    field = fieldValue(text.substr(0, colon));
    if (colon == std::string_view::npos) break;
    text.remove_prefix(colon + 1);
  }
  const int64_t total = fields[0] * 3600 + fields[1] * 60 + fields[2];
  if (total > std::numeric_limits<int32_t>::max())
    ThrowOverflow(LimitReason("a time in seconds (Time2Num)", std::numeric_limits<int32_t>::max()), "Time2Num");
  return static_cast<int32_t>(negative ? -total : total);
}

std::string Num2Time(int32_t seconds) {
  int64_t s = seconds;
  std::string out;
  if (s < 0) {
    out.push_back('-');
    s = -s;
  }
  appendTwoDigits(out, s / 3600);
  out.push_back(':');
  appendTwoDigits(out, s / 60 % 60);
  out.push_back(':');
  appendTwoDigits(out, s % 60);
  return out;
}

std::string UCase(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return out;
}

}  // namespace zv
