// The reader of a record's fields: tagged lines, Ovid's names, labels and untagged text.
#include "records/record_fields.h"

#include <cctype>

#include "records/citation_parts.h"

namespace zv {

namespace {

using F = FieldName;

// A line at the margin shorter than this was not wrapped, so the line below it begins
// a field of its own (DIALOG wraps near column 75).
constexpr std::size_t kWrappedLine = 55;

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t indentOf(std::string_view line) {
  std::size_t i = 0;
  while (i < line.size() && IsBlank(line[i])) ++i;
  return i;
}


struct TagLine {
  bool ok = false;
  std::string_view tag;
  std::string_view text;
  FieldName name = F::Other;
};

// "TI  - text", "TI- text", "TI  text", "  HD  text", "AB  - " with nothing behind.
// `t` is the line's indentation.
TagLine matchTag(std::string_view line, std::size_t t) {
  if (t > 2 || t >= line.size() || !isUpper(line[t])) return {};
  std::size_t e = t + 1;
  while (e < line.size() && (isUpper(line[e]) || isDigit(line[e]))) ++e;
  if (e - t < 2 || e - t > 4) return {};
  const std::string_view tag = line.substr(t, e - t);
  std::size_t j = e;
  while (j < line.size() && line[j] == ' ') ++j;
  const std::size_t blanks = j - e;
  std::string_view text;
  if (j == line.size()) {
    return {};  // a word alone on its line is no tag ("ISSN" is an Ovid field's name)
  } else if (line[j] == '-' && blanks <= 3) {
    if (j + 1 < line.size() && line[j + 1] != ' ') return {};
    if (j + 1 < line.size()) text = TrimText(line.substr(j + 2));
  } else if (blanks >= 2) {
    text = TrimText(line.substr(j));
  } else {
    return {};
  }
  return {true, tag, text, FieldNameOfTag(tag, text)};
}

struct LabelLine {
  bool ok = false;
  bool known = false;
  FieldName name = F::Other;
  std::string_view label;
  std::string_view text;
};

// "  Document type: Journal Article", "Abstract: Surface height ...".
LabelLine matchLabel(std::string_view line, std::size_t t) {
  if (t > 2 || t >= line.size() || !isUpper(line[t])) return {};
  const std::size_t colon = line.find(':', t);
  if (colon == std::string_view::npos || colon - t < 2 || colon - t > 30) return {};
  if (colon + 1 < line.size() && line[colon + 1] != ' ') return {};
  int words = 1;
  for (std::size_t i = t; i < colon; ++i) {
    const char c = line[i];
    if (c == ' ') {
      if (i + 1 == colon || line[i + 1] == ' ') return {};
      ++words;
    } else if (!std::isalpha(static_cast<unsigned char>(c)) && c != '.' && c != '-' && c != '/') {
      return {};
    }
  }
  if (words > 4) return {};
  LabelLine out;
  out.ok = true;
  out.label = line.substr(t, colon - t);
  out.text = colon + 1 < line.size() ? TrimText(line.substr(colon + 1)) : std::string_view{};
  const LabelName known = FieldNameOfLabel(out.label);
  out.known = known.known;
  out.name = known.name;
  return out;
}

// Each word of a label begins with a capital ("Journal Code", "Section Headings").
bool capitalisedLabel(std::string_view label) {
  for (std::size_t i = 0; i < label.size(); ++i)
    if ((i == 0 || label[i - 1] == ' ') && !isUpper(label[i])) return false;
  return true;
}

void appendLine(std::string& text, std::string_view line) {
  line = TrimText(line);
  if (line.empty()) return;
  if (!text.empty()) {
    // A word broken at a hyphen ("p301-" / "12,", "Soil" / "--chemistry") is joined
    // without a blank.
    const bool hyphen = (text.back() == '-' && text.size() > 1 && text[text.size() - 2] != ' ') || line.starts_with("--");
    if (!hyphen) text += ' ';
  }
  text += line;
}

// How the open field began.
enum class Kind { Tagged, Ovid, Labelled, Stray, Block };

// DIALOG's accession line: a number first ("24318876   PMID: 38122410").
bool accessionLine(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (isDigit(text[i]) || text[i] == '-')) ++i;
  return i >= 5 && (i == text.size() || text[i] == ' ');
}

// Names roles for the untagged blocks, in order. Titles first; then, in the lines of
// the citation up to the first empty line after the title: dates, authors, sources,
// and what lies between authors and source as the institution; below that empty
// line, paragraphs of abstract.
class BlockRoles {
 public:
  explicit BlockRoles(RecordFields& out) : out_(out) {}

  void block(std::size_t i) {
    Field& f = out_.at(i);
    const std::string_view text = f.text;
    if (text.starts_with("...")) return;  // a KWIC excerpt: text, with no common name
    if (text.starts_with("DIALOG(R)File ")) {
      // "DIALOG(R)File 155:BioMed Abstracts": the file's number stays with the tag.
      const std::size_t colon = text.find(':');
      if (colon != std::string_view::npos) {
        f.tag.assign(text.substr(0, colon));
        f.text = std::string(TrimText(text.substr(colon + 1)));
        f.name = F::Database;
      }
      return;
    }
    if (text.starts_with("(c) ")) return;  // the file's copyright line
    if (!sawContent_ && accessionLine(text)) {
      sawContent_ = true;
      splitAccession(i);
      return;
    }
    sawContent_ = true;
    if (!title_) {
      // A record that begins deep in the margin is the rest of one the filter split;
      // a title begins with a letter, a digit, a quote or a bracket.
      const unsigned char c0 = static_cast<unsigned char>(text[0]);
      if (f.indent <= 2 && (std::isalnum(c0) || c0 >= 0x80 || c0 == '"' || c0 == '\'' || c0 == '[' || c0 == '('))
        f.name = F::Title;
      title_ = true;
      return;
    }
    if (f.paragraph) body_ = true;
    if (body_) {
      f.name = F::Abstract;
      return;
    }
    if (LooksLikeDate(text)) {
      f.name = F::Date;
      dateAfterPending_ = pending_ > 0;
    } else if (!authors_ && !source_ && LooksLikeAuthors(text)) {
      f.name = F::Author;
      authors_ = true;
    } else if (!source_ && LooksLikeSource(text)) {
      f.name = F::Source;
      source_ = true;
      if (pending_ > 0 && pendingAfterAuthors_) {
        out_.at(pending_ - 1).name = F::Institution;
        pending_ = 0;
      }
    } else if (pending_ == 0) {
      pending_ = i + 1;
      pendingAfterAuthors_ = authors_;
    }
  }

  // A block left without a role is the source of a headline with its date below. A
  // "title" with nothing to back it (no accession line, people, source, date or
  // labelled field) is no citation's: the record's text stays as it is.
  void finish() {
    if (pending_ > 0 && !source_ && dateAfterPending_) out_.at(pending_ - 1).name = F::Source;
    bool backed = false;
    for (std::size_t i = 0; i < out_.size() && !backed; ++i) {
      const FieldName n = out_.at(i).name;
      backed = n != F::Title && n != F::Abstract && n != F::Other;
    }
    if (backed) return;
    for (std::size_t i = 0; i < out_.size(); ++i) out_.at(i).name = F::Other;
  }

 private:
  // "24318876   PMID: 38122410": the accession number, and what follows it as a field
  // of its own.
  void splitAccession(std::size_t i) {
    std::string text = std::move(out_.at(i).text);
    std::size_t end = 0;
    while (end < text.size() && !IsBlank(text[end])) ++end;
    out_.at(i).name = F::Accession;
    out_.at(i).text = text.substr(0, end);
    const std::string_view rest = TrimText(std::string_view(text).substr(end));
    if (rest.empty()) return;
    const std::string_view pmid = FindPmid(rest);
    const bool onlyPmid = !pmid.empty() && rest.starts_with("PMID") && pmid.data() + pmid.size() == rest.data() + rest.size();
    Field& r = out_.add(onlyPmid ? "PMID:" : "", onlyPmid ? F::Pmid : F::Other);
    r.text.assign(onlyPmid ? pmid : rest);
  }

  RecordFields& out_;
  bool sawContent_ = false;
  bool title_ = false;
  bool body_ = false;
  bool authors_ = false;
  bool source_ = false;
  std::size_t pending_ = 0;  // 1 + the index of the first block without a role
  bool pendingAfterAuthors_ = false;
  bool dateAfterPending_ = false;
};

}  // namespace

bool RecordFields::anyCommonField() const {
  for (const Field& f : fields())
    if (f.name != F::Other && f.name != F::Database) return true;
  return false;
}

Field& RecordFields::add(std::string_view tag, FieldName name) {
  if (count_ == fields_.size()) fields_.emplace_back();
  Field& f = fields_[count_++];
  f.tag.assign(tag);
  f.name = name;
  f.text.clear();
  return f;
}

void ReadRecordFields(std::span<const std::string_view> lines, RecordFields& out) {
  out.clear();
  // What each line is, looked at once: its indentation, and its tag if it has one.
  struct LineInfo {
    std::size_t indent;
    TagLine tag;
  };
  thread_local std::vector<LineInfo> info;
  info.resize(lines.size());
  // The record's form: tagged when two lines carry tags, or one carries a tag of a
  // common field or comes first; Ovid's when two of its field names stand alone (or
  // one, first, in a record with no tags).
  int tags = 0, knownTags = 0, ovidNames = 0;
  bool firstIsOvidName = false, firstIsTag = false, seenText = false;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    info[i].indent = indentOf(line);
    info[i].tag = {};
    if (info[i].indent == line.size()) continue;
    const TagLine t = info[i].indent <= 2 ? matchTag(line, info[i].indent) : TagLine{};
    info[i].tag = t;
    if (t.ok) {
      ++tags;
      if (t.name != F::Other) ++knownTags;
      if (!seenText) firstIsTag = true;
    }
    // Ovid's names stand alone, a capital and small letters ("Title") or a short name
    // in capitals ("DOI"); a tag line has blanks behind its capitals.
    const bool maybeName = info[i].indent == 0 && !t.ok &&
                           (line.size() <= 4 || (line.size() > 1 && line[1] >= 'a' && line[1] <= 'z'));
    if (maybeName && OvidFieldName(TrimText(line), false).found) {
      ++ovidNames;
      if (!seenText) firstIsOvidName = true;
    }
    seenText = true;
  }
  const bool tagged = tags >= 2 || knownTags >= 1 || firstIsTag;
  const bool ovid = !tagged && (ovidNames >= 2 || (ovidNames == 1 && firstIsOvidName && tags == 0));

  Kind kind = Kind::Block;
  bool open = false;
  bool afterBlank = false;
  std::size_t lastLength = 0;  // of the open field's last line, for the wrap test
  bool authorTag = false, inTag = false;

  auto start = [&](Kind k, std::string_view tag, FieldName name, std::string_view text, std::string_view line,
                   std::size_t indent) {
    Field& f = out.add(tag, name);
    appendLine(f.text, text);
    f.indent = indent;
    f.paragraph = afterBlank;
    kind = k;
    open = true;
    lastLength = line.size();
    afterBlank = false;
  };
  auto extend = [&](std::string_view line) {
    appendLine(out.at(out.size() - 1).text, line);
    lastLength = line.size();
    afterBlank = false;
  };

  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    const std::size_t indent = info[i].indent;
    if (indent == line.size()) {
      afterBlank = true;
      continue;
    }
    if (tagged) {
      const TagLine& t = info[i].tag;
      if (t.ok) {
        authorTag = authorTag || t.name == F::Author;
        inTag = inTag || t.tag == "IN";
        start(Kind::Tagged, t.tag, t.name, t.text, line, indent);
      } else if (open && (indent > 0 || (kind == Kind::Stray && !afterBlank))) {
        // Indented lines continue the field above, across an empty line too (the
        // paragraphs of an abstract).
        extend(line);
      } else {
        start(Kind::Stray, {}, F::Other, line, line, indent);  // a line at the margin, by itself
      }
      continue;
    }
    if (ovid && indent == 0) {
      const OvidName name = OvidFieldName(TrimText(line), true);
      if (name.found) {
        start(Kind::Ovid, name.fullName, name.name, {}, line, indent);
        continue;
      }
    }
    if (ovid && open && kind == Kind::Ovid && !afterBlank) {
      extend(line);
      continue;
    }
    const LabelLine label = matchLabel(line, indent);
    if (label.ok && (label.known || (indent == 2 && capitalisedLabel(label.label) && !out.empty()))) {
      std::string tag(label.label);
      tag += ':';
      start(Kind::Labelled, tag, label.name, label.text, line, indent);
      continue;
    }
    // Untagged text. A line at the margin, or indented deeper than two, continues the
    // block above when that block's last line was long enough to have been wrapped;
    // a line indented two blanks begins a new one.
    // A KWIC excerpt runs on to the next empty line.
    const bool excerpt = open && kind == Kind::Block && out.at(out.size() - 1).text.starts_with("...");
    if (open && !afterBlank && (excerpt || ((indent == 0 || indent > 2) && kind != Kind::Stray && lastLength >= kWrappedLine))) {
      extend(line);
      continue;
    }
    start(Kind::Block, {}, F::Other, line, line, indent);
  }

  // Orbit prints inventors under "IN"; where no other tag names people, they are the
  // record's authors.
  if (tagged && inTag && !authorTag) {
    for (std::size_t i = 0; i < out.size(); ++i)
      if (out.at(i).tag == "IN") out.at(i).name = F::Author;
  }
  if (tagged || ovid) return;

  // The untagged blocks get their roles in order; labelled fields have theirs. The
  // accession line may add a field behind the others, which takes no role.
  BlockRoles roles(out);
  const std::size_t blocks = out.size();
  for (std::size_t i = 0; i < blocks; ++i)
    if (out.at(i).tag.empty() && out.at(i).name == F::Other) roles.block(i);
  roles.finish();
}

}  // namespace zv
