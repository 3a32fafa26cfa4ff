#pragma once

namespace tessarine::batch
{

/// Readies the process for whatever surroundings it was started in. To be called before any file is opened.
///
/// - A write that can't be done fails and is reported: a pipe that nobody reads any more and a file beyond the limit of
/// its
///   size don't end the process (SIGPIPE, SIGXFSZ). What a report without a reader means is Output::readerIsGone's.
/// - Where standard input, output or error is closed, its number is taken, so that no file gets it. Notes for standard
///   error would go into a presentation otherwise. Reading and writing it fails.
/// - On Windows standard input, output and error carry bytes as they are, and no box asks for a missing disk.
void GuardProcess();

}  // namespace tessarine::batch
