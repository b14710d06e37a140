// The table of commands that start from a dialog of their own.
#include "forms/own_commands.h"

#include <array>

#include "forms/frm_dedup.h"
#include "forms/frm_diction.h"
#include "forms/frm_export.h"
#include "forms/frm_file_view.h"
#include "forms/frm_flt_ad_hoc.h"
#include "forms/frm_qbf.h"
#include "forms/frm_rank.h"
#include "forms/frm_sort.h"
#include "forms/polish_own.h"
#include "forms/types_dialog.h"

namespace zv::forms {

namespace {

// One row per tool: {number, &function that shows its dialog}. Kept in number order.
constexpr std::array kOwnCommands{
    OwnCommand{1, &RunFltAdHoc},   OwnCommand{200, &OpenPikTypes},  OwnCommand{201, &BeginTypesJob},
    OwnCommand{300, &OpenSepTypes}, OwnCommand{301, &BeginTypesJob},
    OwnCommand{1700, &FrmQBF::Open},
    OwnCommand{1800, &FrmRank::Open},
    OwnCommand{1900, &FrmSort::Open},
    OwnCommand{2100, &FrmDiction::Run},
    OwnCommand{2200, &RunDivideRecords},
    OwnCommand{2300, &RunUndelimitRecords},
    OwnCommand{2400, &RunRenumberLabels},
    OwnCommand{2500, &RunDeleteLabels},
    OwnCommand{2600, &RunReplaceLabels},
    OwnCommand{2700, &RunLineBreaks},
    OwnCommand{2800, &RunPageBreaks},
    OwnCommand{2900, &RunOpenFileView},
    OwnCommand{2901, &RunSplitFile},
    OwnCommand{3200, &RunCoverSave},
    OwnCommand{3210, &RunCoverSave},
    OwnCommand{3220, &RunCoverSaveSettings},
    OwnCommand{3230, &RunCoverOpen},
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
