#include "ToolLibrary/ParameterJSONConverter.h"

#include "platform/core/FeatureFlag.h"
#include "util/utility/Assert.h"

#include <QRegularExpression>

namespace Varn::Tools {

using std::wstring;

wstring ParameterJSONConverter::preprocessExpression(const wstring &expression)
{
    static const QRegularExpression call(QStringLiteral(R"(Util.featureFlagEnabled\('([^']*)'\))"),
                                         QRegularExpression::DotMatchesEverythingOption);
    const QString text = QString::fromStdWString(expression);
    QString settled;
    qsizetype at = 0;
    for (const QRegularExpressionMatch &match : call.globalMatch(text)) {
        settled += QStringView(text).sliced(at, match.capturedStart() - at);
        settled += FeatureFlag::enabled(match.captured(1).toStdString(), true) ? u"true" : u"false";
        at = match.capturedEnd();
    }
    settled += QStringView(text).sliced(at);
    wstring out = settled.toStdWString();
    VARN_ASSERT(out.find(L"Util.") == wstring::npos);
    return out;
}

} // namespace Varn::Tools
