// The polishing tools' rows of the command table.
#include "polish/polish_commands.h"

#include "polish/cover.h"
#include "polish/cover_settings.h"
#include "polish/delete_labels.h"
#include "polish/divide.h"
#include "polish/format.h"
#include "polish/renumber.h"
#include "polish/replace_labels.h"
#include "polish/undelimit.h"

namespace zv {

namespace {

JobResult noCommand() {
  JobResult none;
  none.outcome = JobOutcome::NoCommand;
  return none;
}

template <class Params, JobResult (*Tool)(JobState&, JobProgress&, const Params&)>
JobResult run(CommandContext& context) {
  const Params* params = context.get<Params>();
  return params == nullptr ? noCommand() : Tool(context.job, context.progress, *params);
}

template <CoverLayout Layout>
JobResult cover(JobState& state, JobProgress& progress, const CoverParams& params) {
  return SaveCoverPage(state, progress, params, Layout);
}

// The settings commands change the form's fields or the store, and write no file.
template <bool Save>
JobResult coverSettings(JobState& state, JobProgress& progress, const CoverSettingsParams& params) {
  return RunJob(state, progress, [&](Job&, JobResult&) -> JobOutcome {
    if (params.store == nullptr || params.fields == nullptr) return JobOutcome::NoCommand;
    if constexpr (Save)
      SaveCoverSettings(*params.store, *params.fields);
    else
      LoadCoverSettings(*params.store, *params.fields);
    return JobOutcome::Done;
  });
}

}  // namespace

JobResult DivideCommand(CommandContext& c) { return run<PolishInput, &DivideRecords>(c); }
JobResult UndelimitCommand(CommandContext& c) { return run<PolishFiles, &UndelimitRecords>(c); }
JobResult RenumberCommand(CommandContext& c) { return run<PolishFiles, &RenumberLabels>(c); }
JobResult DeleteLabelsCommand(CommandContext& c) { return run<PolishFiles, &DeleteLabels>(c); }
JobResult ReplaceLabelsCommand(CommandContext& c) { return run<ReplaceLabelsParams, &ReplaceLabels>(c); }
JobResult LineBreaksCommand(CommandContext& c) { return run<PolishInput, &RemoveLineBreaks>(c); }
JobResult PageBreaksCommand(CommandContext& c) { return run<PageBreaksParams, &InsertPageBreaks>(c); }
JobResult CoverLibraryCommand(CommandContext& c) { return run<CoverParams, &cover<CoverLayout::Library>>(c); }
JobResult CoverFirmCommand(CommandContext& c) { return run<CoverParams, &cover<CoverLayout::Firm>>(c); }
JobResult CoverSaveSettingsCommand(CommandContext& c) {
  return run<CoverSettingsParams, &coverSettings<true>>(c);
}
JobResult CoverLoadSettingsCommand(CommandContext& c) {
  return run<CoverSettingsParams, &coverSettings<false>>(c);
}

}  // namespace zv
