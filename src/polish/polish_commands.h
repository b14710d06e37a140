// The polishing tools as rows of the command table: each takes its parameters from
// the context as the front end gathered them.
#pragma once

#include <cstdint>

#include "core/dispatcher.h"

namespace zv {

namespace polish {
inline constexpr int32_t kDivide = 2200;
inline constexpr int32_t kUndelimit = 2300;
inline constexpr int32_t kRenumber = 2400;
inline constexpr int32_t kDeleteLabels = 2500;
inline constexpr int32_t kReplaceLabels = 2600;
inline constexpr int32_t kLineBreaks = 2700;
inline constexpr int32_t kPageBreaks = 2800;
inline constexpr int32_t kCoverLibrary = 3200;
inline constexpr int32_t kCoverFirm = 3210;
inline constexpr int32_t kCoverSaveSettings = 3220;
inline constexpr int32_t kCoverLoadSettings = 3230;
}  // namespace polish

JobResult DivideCommand(CommandContext& context);           // PolishInput
JobResult UndelimitCommand(CommandContext& context);        // PolishFiles
JobResult RenumberCommand(CommandContext& context);         // PolishFiles
JobResult DeleteLabelsCommand(CommandContext& context);     // PolishFiles
JobResult ReplaceLabelsCommand(CommandContext& context);    // ReplaceLabelsParams
JobResult LineBreaksCommand(CommandContext& context);       // PolishInput
JobResult PageBreaksCommand(CommandContext& context);       // PageBreaksParams
JobResult CoverLibraryCommand(CommandContext& context);     // CoverParams
JobResult CoverFirmCommand(CommandContext& context);        // CoverParams
JobResult CoverSaveSettingsCommand(CommandContext& context);  // CoverSettingsParams
JobResult CoverLoadSettingsCommand(CommandContext& context);  // CoverSettingsParams

}  // namespace zv
