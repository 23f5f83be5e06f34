// LibraryDisplayNames.h -- the texts of the tree's fixed nodes and of the sample libraries, in the language of the
// moment. Stateless, any thread.
#pragma once

#include <QString>

namespace Varn::Tools::LibraryDisplayNames {

QString localRoot();
QString cloudRoot();
QString samplesRoot();
QString documentsRoot();
QString hubRoot();
QString vendorRoot();

/// The localized name of the sample library with the English name \a baseName; another name comes back as it is.
QString sampleLibrary(const QString &baseName);

} // namespace Varn::Tools::LibraryDisplayNames
