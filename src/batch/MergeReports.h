#pragma once

#include "batch/BatchCall.h"

namespace tessarine::batch
{

class Output;

/// Makes one report of those that the call names, and gives the exit status: of shards in the order of the whole job,
/// else one after the other. What is missing, and what is there twice, is told on standard error, and the exit status
/// is FileFailed then.
///
/// Refuses (Refusal.h) reports that can't be of one job: of different divisions, of a find and a replace, of shards and
/// of whole runs.
int MergeReports(const BatchCall& call, Output& output);

}  // namespace tessarine::batch
