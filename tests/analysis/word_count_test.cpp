// Diction without limits counts with a hashed table in large blocks of text; within
// the limits its list must be the same bytes as the list the table searched in order
// makes. And the byte-set masks the counter cuts words with.
#include "analysis/word_count.h"

#include <gtest/gtest.h>

#include <random>

#include "analysis/analysis_common.h"
#include "analysis/diction.h"
#include "analysis_test_support.h"

namespace zv {
namespace {

using test::FileExists;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

// Text with what Diction's counting must get right: hyphen runs, label lines,
// question marks, case, tabs, NUL bytes, words of 35 characters and longer ones that
// begin with them, every line end, and a last line without one.
std::string DictionText(std::mt19937& random, int lines) {
  const std::string stem35(35, 'q');
  const std::string pieces[] = {"cost",      "COST",        "Cost-benefit", "cost--benefit", "a---b",    "----",
                                "well-known", "why?",       "Record - 7",   "Record -- 7",   "Record --- 7", " ",
                                "  ",        ",",           ".",            "\t",            std::string(1, '\0'),
                                stem35,      stem35 + "x",  stem35 + "yz",  "QQQ",           "-",        "x"};
  static const char* ends[] = {"\r\n", "\n", "\r"};
  std::string text;
  for (int i = 0; i < lines; ++i) {
    for (int j = 0, n = static_cast<int>(random() % 9); j < n; ++j) text += pieces[random() % std::size(pieces)];
    if (i + 1 < lines || random() % 2) text += ends[random() % 3];
  }
  return text;
}

// The list, and after it the lines read and the unique words the job reported.
std::string ListOf(const TempDir& dir, const std::string& text, bool large) {
  WriteFile(dir.file("words.txt"), text);
  JobState job;
  const JobResult r =
      Diction(job, NoProgress(), DictionParams{dir.file("words.txt"), dir.file("OMIT.LST"), large, 1'700'000'000});
  EXPECT_EQ(r.outcome, JobOutcome::Done);
  return (FileExists(dir.file("words.DIC")) ? ReadFile(dir.file("words.DIC")) : "<none>") + "|lines " +
         std::to_string(r.lines) + "|words " + std::to_string(r.records);
}

TEST(DictionWithoutLimits, ListsWhatTheTableSearchedInOrderLists) {
  std::mt19937 random(3);
  const std::string stem35(35, 'q');
  const std::string omits[] = {"", "cost\r\nwhy\r\n", "qqq\r\n" + stem35 + "x\r\n" + stem35 + "\r\n", "\r\nCOST\r\n"};
  for (int round = 0; round < 60; ++round) {
    TempDir dir;
    const std::string& omit = omits[round % std::size(omits)];
    if (!omit.empty()) WriteFile(dir.file("OMIT.LST"), omit);
    const std::string text = DictionText(random, 1 + static_cast<int>(random() % 40));
    const std::string exact = ListOf(dir, text, false);
    EXPECT_EQ(ListOf(dir, text, true), exact) << "round " << round << ":\n" << text;
  }
}

TEST(DictionWithoutLimits, ALongWordSeenFirstCarriesTheCountOfItsStem) {
  // The stem's element is the long word's when that came first: 1 + 2, and the other
  // long word stands alone; the other way round the stem counts only itself.
  const std::string stem(35, 'q');
  struct Case {
    std::string text;
    std::string body;
  } cases[] = {
      {stem + "x " + stem + " " + stem + "y " + stem + " z z z z",
       " 4      z\r\n 3      " + stem + "\r\n 1      " + stem + "\r\n"},
      {stem + " " + stem + "x " + stem + " z z z z", " 4      z\r\n 2      " + stem + "\r\n 1      " + stem + "\r\n"},
  };
  for (const Case& c : cases) {
    TempDir dir;
    const std::string list = ListOf(dir, c.text + "\r\n", true);
    EXPECT_EQ(list.substr(list.find("\r\n\r\n", list.find("Unique")) + 4), c.body + "|lines 1|words 3");
    EXPECT_EQ(ListOf(dir, c.text + "\r\n", false), list);
  }
}

TEST(ByteSetMasks, MarkTheBytesOfTheSetSixtyFourAtATime) {
  std::array<bool, 256> diction{}, scattered{};
  const DelimiterSet delims(kDicDelims);
  for (int c = 0; c < 256; ++c) {
    diction[static_cast<std::size_t>(c)] = delims.has(static_cast<char>(c)) || c == '\r' || c == '\n';
    scattered[static_cast<std::size_t>(c)] = (c * 37 + c / 16) % 5 == 0;  // more than eight classes of high halves
  }
  std::mt19937 random(9);
  for (const auto* set : {&diction, &scattered}) {
    const ByteSetMasks masks(*set);
    for (int round = 0; round < 200; ++round) {
      char bytes[64];
      for (char& b : bytes) b = static_cast<char>(random());
      uint64_t expected = 0;
      for (int i = 0; i < 64; ++i)
        if ((*set)[static_cast<unsigned char>(bytes[i])]) expected |= uint64_t{1} << i;
      ASSERT_EQ(masks.mask64(bytes), expected);
    }
  }
}

}  // namespace
}  // namespace zv
