// Line ends found 64 bytes at a time, for the viewer's index and its line lookups.
//
// A line ends at LF, at a lone CR, or at CR LF, which ends it once (at its LF), as
// every reader of the program splits lines. A CR at the end of a range is settled by
// the byte behind the range, which each function takes as `next` (-1: the end of the
// file).
#pragma once

#include <cstddef>
#include <cstdint>

namespace zv::viewer {

inline constexpr int kNoByte = -1;

// Bit i set where byte i of the 64 at `p` ends a line. `nextIsLf`: byte 64 is an LF.
uint64_t LineEndMask64(const char* p, bool nextIsLf);

// The same for the first `n` (< 64) bytes at `p`, with `next` the byte behind them.
uint64_t LineEndMaskTail(const char* p, std::size_t n, int next);

// Line ends among the `n` bytes at `p`.
int64_t CountLineEnds(const char* p, std::size_t n, int next);

// The offset just behind the `count`-th line end among the `n` bytes at `p` (count >= 1),
// or -1 when there are fewer.
int64_t SkipLineEnds(const char* p, std::size_t n, int next, int64_t count);

// The offset of the first CR or LF among the `n` bytes at `p`, or -1.
int64_t FindLineEnd(const char* p, std::size_t n);

// Bytes of the line end that starts at `p` (CR LF: 2, else 1); `end` bounds the read.
inline int LineEndLength(const char* p, const char* end) {
  return (*p == '\r' && p + 1 < end && p[1] == '\n') ? 2 : 1;
}

// The byte at `p` for a `next` argument: kNoByte at `end`.
inline int ByteAt(const char* p, const char* end) {
  return p < end ? static_cast<unsigned char>(*p) : kNoByte;
}

}  // namespace zv::viewer
