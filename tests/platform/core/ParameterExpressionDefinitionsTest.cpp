// Every expression of the definitions of the tool parameters.
#include "ExpressionTestSupport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

#include <memory_resource>
#include <new>
#include <set>

using namespace ExpressionTest;

namespace {

enum class Kind { Boolean, Number, Text }; // in the order of ExpressionValue

struct Definition {
    std::string where; ///< "tool_diameter defaultExp.metric"
    std::wstring text;
    Kind kind; ///< of its value
};

QJsonObject definitions()
{
    QFile file(QStringLiteral(":/varn/core/tool-parameters.json"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).object();
}

Kind kindOfType(int valueType)
{
    if (valueType == 1)
        return Kind::Boolean;
    return valueType == 4 || valueType == 5 ? Kind::Number : Kind::Text;
}

class Collector
{
public:
    Collector()
    {
        const QJsonObject root = definitions();
        for (const QJsonValue &row : root["parameters"].toArray())
            addParameter(row.toObject());
        for (const QJsonValue &row : root["enumerations"].toArray()) {
            const QJsonObject entry = row.toObject();
            add(entry["enumeration"].toString() + ' ' + entry["key"].toString(), entry["enableExp"], Kind::Boolean);
        }
        for (const QJsonValue &row : root["links"].toArray()) {
            const QJsonObject link = row.toObject();
            const QString where = link["set"].toString() + " link";
            add(where, link["formula"], Kind::Number);
            add(where, link["when"], Kind::Boolean);
        }
    }

    std::vector<Definition> found;

private:
    void addParameter(const QJsonObject &parameter)
    {
        const QString id = parameter["id"].toString();
        const Kind kind = kindOfType(parameter["valueType"].toInt());
        addRow(id, parameter, kind);
        for (const QJsonValue &row : parameter["overrides"].toArray())
            addRow(id + " override", row.toObject(), kind);
    }

    void addRow(const QString &where, const QJsonObject &row, Kind kind)
    {
        for (const QString &system : {QStringLiteral("metric"), QStringLiteral("inch")})
            add(where + " defaultExp." + system, row["defaultExp"].toObject()[system], kind);
        add(where + " enableExp", row["enableExp"], Kind::Boolean);
        add(where + " disabledExp", row["disabledExp"], kind);
        for (const QString &list : {QStringLiteral("errors"), QStringLiteral("warnings")})
            for (const QJsonValue &constraint : row[list].toArray())
                add(where + ' ' + list, constraint.toObject()["expression"], Kind::Boolean);
    }

    /// An empty text is no expression.
    void add(const QString &where, const QJsonValue &text, Kind kind)
    {
        if (!text.toString().isEmpty())
            found.push_back({where.toStdString(), text.toString().toStdWString(), kind});
    }
};

/// Every parameter at some value of its kind.
Parameters someParameters(const std::wstring &toolType)
{
    static const std::wstring text = L"custom";
    std::map<std::wstring, Parameters::Entry, std::less<>> entries;
    for (const QJsonValue &row : definitions()["parameters"].toArray()) {
        const Kind kind = kindOfType(row.toObject()["valueType"].toInt());
        ExpressionValue value = 10.0;
        if (kind == Kind::Boolean)
            value = true;
        else if (kind == Kind::Text)
            value = text;
        entries[row.toObject()["id"].toString().toStdWString()] = value;
    }
    entries[L"tool_type"] = ExpressionValue(toolType);
    return Parameters(entries);
}

} // namespace

TEST(ParameterExpressionDefinitions, EveryOneIsAnExpressionOverKnownParameters)
{
    std::set<std::string> ids;
    for (const QJsonValue &row : definitions()["parameters"].toArray())
        ids.insert(row.toObject()["id"].toString().toStdString());
    const Collector expressions;
    EXPECT_GT(expressions.found.size(), 700u);
    std::set<std::string> used;
    for (const Definition &definition : expressions.found) {
        const auto expression = ParameterExpression::parse(definition.text);
        ASSERT_TRUE(expression) << definition.where << ": " << describe(expression.error());
        for (const std::wstring &name : expression->names()) {
            EXPECT_TRUE(ids.contains(narrow(name))) << definition.where << ": " << narrow(name);
            used.insert(narrow(name));
        }
    }
    EXPECT_GT(used.size(), 100u);
}

TEST(ParameterExpressionDefinitions, EveryOneHasAValueOfItsKindForEveryTypeOfTool)
{
    const Collector expressions;
    std::vector<std::wstring> types;
    for (const QJsonValue &row : definitions()["enumerations"].toArray())
        if (row.toObject()["enumeration"].toString() == "toolType")
            types.push_back(row.toObject()["key"].toString().toStdWString());
    EXPECT_GE(types.size(), 48u);
    for (const std::wstring &type : types) {
        Parameters parameters = someParameters(type);
        for (const Definition &definition : expressions.found) {
            const ParameterExpression expression = parsed(definition.text);
            const ExpressionResult result = expression.evaluate(parameters);
            ASSERT_TRUE(result) << narrow(type) << ", " << definition.where << ": " << describe(result);
            EXPECT_EQ(result->index(), static_cast<std::size_t>(definition.kind))
                << narrow(type) << ", " << definition.where << ": " << describe(result);
        }
    }
}

TEST(ParameterExpressionDefinitions, NoneNeedsMemoryToBeEvaluated)
{
    struct NoMemory {
        std::pmr::memory_resource *before = std::pmr::set_default_resource(std::pmr::null_memory_resource());
        ~NoMemory() { std::pmr::set_default_resource(before); }
    };
    const Collector expressions;
    Parameters parameters = someParameters(L"flat end mill");
    for (const Definition &definition : expressions.found) {
        const ParameterExpression expression = parsed(definition.text);
        const NoMemory guard;
        EXPECT_NO_THROW(expression.evaluate(parameters)) << definition.where;
    }
    const ParameterExpression large = parsed(repeated(L"1 + (", 100) + L"1" + repeated(L")", 100));
    const NoMemory guard;
    EXPECT_THROW(large.evaluate(parameters), std::bad_alloc);
}

TEST(ParameterExpressionDefinitions, EveryFunctionThatTheyMayUseIsThere)
{
    const QJsonArray functions = definitions()["functions"].toArray();
    EXPECT_EQ(functions.size(), 17);
    const std::set<std::string> numbers = {"Math.PI"};
    const std::set<std::string> ofTwo = {"Math.atan2", "Math.min", "Math.max", "Math.pow"};
    const std::set<std::string> ofText = {"Util.featureFlagEnabled"};
    for (const QJsonValue &function : functions) {
        const std::string name = function.toString().toStdString();
        std::string call = name + "(0.5)";
        if (numbers.contains(name))
            call = name;
        else if (ofTwo.contains(name))
            call = name + "(0.5, 1)";
        else if (ofText.contains(name))
            call = name + "('flag')";
        const auto expression = ParameterExpression::parse(std::wstring(call.begin(), call.end()));
        ASSERT_TRUE(expression) << call << ": " << describe(expression.error());
        Parameters none;
        EXPECT_TRUE(expression->evaluate(none)) << call;
    }
}
