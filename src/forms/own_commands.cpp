// The table of commands that start from a dialog of their own.
#include "forms/own_commands.h"

#include <array>

#include "forms/frm_dedup.h"
#include "forms/frm_export.h"

namespace zv::forms {

namespace {

// One row per tool: {number, &function that shows its dialog}. Kept in number order.
constexpr std::array kOwnCommands{
    OwnCommand{kExportRecords, &RunExportRecords},
    OwnCommand{kFindDuplicates, &RunFindDuplicates},
};

}  // namespace

std::span<const OwnCommand> OwnCommands() { return kOwnCommands; }

const OwnCommand* FindOwnCommand(int32_t number) {
  for (const OwnCommand& c : kOwnCommands)
    if (c.number == number) return &c;
  return nullptr;
}

}  // namespace zv::forms
