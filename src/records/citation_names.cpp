// The people of a citation: author lines split into names, each into family and
// given names, in the shapes the services print them.
#include <array>

#include "records/citation_parts.h"
#include "records/text_scan.h"

namespace zv {

namespace {

using namespace scan;

// Initials: "T", "T.", "AB", "A.B.", "J.-P.": capitals and dots, three letters at most.
bool initials(std::string_view t) {
  if (t.empty() || t.size() > 6) return false;
  int letters = 0;
  for (char c : t) {
    if (isUpper(c))
      ++letters;
    else if (c != '.' && c != '-')
      return false;
  }
  return letters >= 1 && letters <= 3 && (t.size() <= 3 || t.find('.') != std::string_view::npos);
}

// One name of a list: a capital first, no digits, a few words.
bool nameLike(std::string_view part) {
  part = TrimText(part);
  if (part.empty() || part.size() > 50) return false;
  const unsigned char first = static_cast<unsigned char>(part[0]);
  if (!isUpper(part[0]) && first < 0x80) return false;
  for (char c : part)
    if (isDigit(c) || c == '(' || c == ')' || c == ':') return false;
  const std::size_t words = wordCount(part);
  return words >= 1 && words <= 6;
}

// "Surname I" with initials last, or "Surname, Given" with few words.
bool oneName(std::string_view text) {
  text = TrimText(text);
  if (!nameLike(text)) return false;
  const std::size_t comma = text.find(',');
  if (comma != std::string_view::npos)
    return text.find(',', comma + 1) == std::string_view::npos && wordCount(text) <= 4;
  std::string_view last;
  std::size_t words = 0;
  forWords(text, [&](std::string_view w) {
    last = w;
    ++words;
  });
  return words >= 2 && words <= 4 && initials(last);
}

void pushName(std::string_view text, PersonList& out) {
  text = TrimText(text);
  if (!text.empty()) SplitName(text, out.add());
}

}  // namespace

bool LooksLikeAuthors(std::string_view text) {
  text = TrimText(text);
  if (text.starts_with("By ") || text.starts_with("by ")) return nameLike(text.substr(3));
  if (text.find(';') != std::string_view::npos) {
    bool all = true;
    std::size_t parts = 0;
    forParts(text, ';', [&](std::string_view p) {
      if (TrimText(p).empty()) return;
      ++parts;
      all = all && nameLike(p) && wordCount(p) <= 5;
    });
    return all && parts >= 1;
  }
  return oneName(text);
}

PersonName& PersonList::add() {
  if (count_ == items_.size()) items_.emplace_back();
  PersonName& p = items_[count_++];
  p.family.clear();
  p.given.clear();
  return p;
}

void PersonList::add(std::string_view family, std::string_view given) {
  PersonName& p = add();
  p.family.assign(family);
  p.given.assign(given);
}

void SplitName(std::string_view text, PersonName& p) {
  text = TrimText(text);
  if (text.starts_with("By ") || text.starts_with("by ")) text = TrimText(text.substr(3));
  auto given = [](std::string_view g) {
    g = TrimText(g);
    // "Sigrun." loses the sentence's dot; "O." and "T. M." keep the initial's.
    const std::size_t blank = g.find_last_of(' ');
    const std::string_view lastWord = blank == std::string_view::npos ? g : g.substr(blank + 1);
    if (g.size() > 2 && g.back() == '.' && !initials(lastWord)) g.remove_suffix(1);
    return g;
  };
  const std::size_t comma = text.find(',');
  if (comma != std::string_view::npos) {
    p.family.assign(TrimText(text.substr(0, comma)));
    p.given.assign(given(text.substr(comma + 1)));
    return;
  }
  std::array<std::string_view, 12> words{};
  std::size_t n = 0;
  forWords(text, [&](std::string_view w) {
    if (n < words.size()) words[n++] = w;
  });
  if (n <= 1) {
    p.family.assign(text);
    p.given.clear();
    return;
  }
  auto join = [&](std::size_t a, std::size_t b) {
    return text.substr(static_cast<std::size_t>(words[a].data() - text.data()),
                       static_cast<std::size_t>(words[b - 1].data() + words[b - 1].size() - words[a].data()));
  };
  std::size_t lead = 0;
  while (lead < n && initials(words[lead])) ++lead;
  std::size_t trail = n;
  while (trail > 0 && initials(words[trail - 1])) --trail;
  if (trail < n && trail > 0) {  // Varga T, Okafor-Reyes PA
    p.family.assign(join(0, trail));
    p.given.assign(join(trail, n));
  } else if (lead > 0 && lead < n) {  // T. Varga
    p.given.assign(join(0, lead));
    p.family.assign(join(lead, n));
  } else {  // Imogen Trask
    p.given.assign(join(0, n - 1));
    p.family.assign(words[n - 1]);
  }
  if (p.family.size() > 1 && p.family.back() == '.') p.family.pop_back();
}

void SplitAuthors(std::string_view text, PersonList& out) {
  text = TrimText(text);
  // The commonest line of all, one "Surname GI" (MEDLINE prints an AU line a person),
  // goes straight in.
  if (const std::size_t blank = text.find(' '); blank != std::string_view::npos && blank > 0 &&
                                                 text.find(' ', blank + 1) == std::string_view::npos) {
    const std::string_view family = text.substr(0, blank), given = text.substr(blank + 1);
    // (Two searches of one character: a search for either of two looks up each byte
    // of the name in the pair, a library call a byte.)
    if (initials(given) && family.find(',') == std::string_view::npos && family.find(';') == std::string_view::npos &&
        family != "By" && family != "by") {
      out.add(family.back() == '.' ? family.substr(0, family.size() - 1) : family, given);
      return;
    }
  }
  if (text.starts_with("By ") || text.starts_with("by ")) text = TrimText(text.substr(3));
  if (text.empty()) return;
  if (text.find(';') != std::string_view::npos) {
    forParts(text, ';', [&](std::string_view p) { pushName(p, out); });
    return;
  }
  if (text.find("  ") != std::string_view::npos) {
    forParts(text, 0, [&](std::string_view p) { pushName(p, out); });
    return;
  }
  if (text.find(',') != std::string_view::npos) {
    // "Petrakis N, Aldana-Ruiz C, Brook O." or "Rautio, H., Ekholm, V." or one
    // "Surname, Given".
    std::array<std::string_view, 64> parts{};
    std::size_t n = 0;
    forParts(text, ',', [&](std::string_view p) {
      if (n < parts.size()) parts[n++] = TrimText(p);
    });
    bool eachANameWithInitials = n >= 2, pairs = n >= 4 && n % 2 == 0;
    for (std::size_t i = 0; i < n; ++i) {
      eachANameWithInitials = eachANameWithInitials && oneName(parts[i]) && parts[i].find(',') == std::string_view::npos;
      if (i % 2 == 1) pairs = pairs && initials(parts[i]);
    }
    if (eachANameWithInitials) {
      for (std::size_t i = 0; i < n; ++i) pushName(parts[i], out);
    } else if (pairs) {
      for (std::size_t i = 0; i + 1 < n; i += 2) out.add(parts[i], parts[i + 1]);
    } else {
      pushName(text, out);
    }
    return;
  }
  // "Varga-Holm T. Okafor-Reyes P. Brandvold K.": a name ends with its initials.
  // ("T. Varga" is one person: initials that come first belong to the name after them.)
  std::size_t nameStart = 0;
  bool inInitials = false, surname = false;
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && IsBlank(text[i])) ++i;
    std::size_t e = i;
    while (e < text.size() && !IsBlank(text[e])) ++e;
    if (e == i) break;
    const bool ini = initials(text.substr(i, e - i));
    if (!ini && inInitials && surname) {
      pushName(text.substr(nameStart, i - nameStart), out);
      nameStart = i;
      surname = false;
    }
    surname = surname || !ini;
    inInitials = ini;
    i = e;
  }
  pushName(text.substr(nameStart), out);
}

}  // namespace zv
