// SampleLibraries.h -- brings the sample libraries to the person, so that a fresh machine has a tree to look at.
#pragma once

namespace Quillon {

/// Copies the libraries that came with the program into the folder of samples, all or none, if there is no such folder
/// yet. What cannot be copied is told in the log: quillon works without samples too.
void installSampleLibraries();

} // namespace Quillon
