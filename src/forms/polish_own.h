// Where each polishing command starts on the desktop: its dialogs gather the files
// and choices, then the job runs in frmRenumber (or frmCover).
#pragma once

#include "core/dispatcher.h"

namespace zv::forms {

class FrmMain;

void RunDivideRecords(FrmMain& frmMain, const Command& command);     // 2200
void RunUndelimitRecords(FrmMain& frmMain, const Command& command);  // 2300
void RunRenumberLabels(FrmMain& frmMain, const Command& command);    // 2400
void RunDeleteLabels(FrmMain& frmMain, const Command& command);      // 2500
void RunReplaceLabels(FrmMain& frmMain, const Command& command);     // 2600
void RunLineBreaks(FrmMain& frmMain, const Command& command);        // 2700
void RunPageBreaks(FrmMain& frmMain, const Command& command);        // 2800
void RunCoverSave(FrmMain& frmMain, const Command& command);         // 3200, 3210
void RunCoverSaveSettings(FrmMain& frmMain, const Command& command); // 3220
void RunCoverOpen(FrmMain& frmMain, const Command& command);         // 3230: load, then frmCover

}  // namespace zv::forms
