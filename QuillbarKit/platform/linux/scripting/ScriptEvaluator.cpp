#include "platform/linux/scripting/ScriptEvaluator.h"

#include "platform/linux/scripting/ScriptError.h"
#include "platform/linux/scripting/ScriptablePlayer.h"

#include <QHash>

#include <utility>

namespace {
/// Words that stand for themselves.
std::optional<ScriptValue> constant(const QString& name)
{
    if (name == u"true" || name == u"false")
        return name == u"true";
    for (const auto* word : {u"stopped", u"playing", u"paused", u"off", u"all", u"one"}) {
        if (name == QStringView(word))
            return name;
    }
    return std::nullopt;
}

class Evaluation
{
public:
    explicit Evaluation(ScriptablePlayer& player) : m_player(player) {}

    ScriptValue run(const std::vector<ScriptStatement>& statements)
    {
        runAll(statements);
        return std::move(m_result);
    }

private:
    void runAll(const std::vector<ScriptStatement>& statements)
    {
        for (const auto& statement : statements) {
            if (m_hasReturned)
                return;
            runOne(statement);
        }
    }

    void runOne(const ScriptStatement& statement)
    {
        switch (statement.kind) {
        case ScriptStatement::Kind::Evaluate:
            m_result = value(statement.expression);
            return;
        case ScriptStatement::Kind::Return:
            m_result = value(statement.expression);
            m_hasReturned = true;
            return;
        case ScriptStatement::Kind::Set:
            set(statement.name, value(statement.expression));
            return;
        case ScriptStatement::Kind::Perform:
            m_player.perform(statement.name);
            return;
        case ScriptStatement::Kind::If:
            // To the letter, though scripts elsewhere fold the case: a track's identifier tells tracks apart.
            if ((text(statement.expression) == text(statement.other)) != statement.isNegated)
                runAll(statement.body);
            return;
        case ScriptStatement::Kind::Try:
            runTry(statement);
            return;
        }
    }

    void runTry(const ScriptStatement& statement)
    {
        try {
            runAll(statement.body);
            return;
        } catch (const ScriptError&) {
            // What follows may fail in its turn, outside of this block.
        }
        runAll(statement.onError);
    }

    /// One word is a variable, unless the player has a property of that name.
    void set(const QString& name, const ScriptValue& value)
    {
        if (name.contains(u' ') || isPlayersWord(name))
            m_player.setProperty(name, value);
        else
            m_variables.insert(name, value);
    }

    static bool isPlayersWord(const QString& name) { return name == u"shuffling" || name == u"repeating"; }

    ScriptValue value(const ScriptExpression& expression)
    {
        if (expression.isText)
            return text(expression);
        return bareValue(expression);
    }

    ScriptValue bareValue(const ScriptExpression& expression)
    {
        switch (expression.kind) {
        case ScriptExpression::Kind::Literal:
            return expression.literal;
        case ScriptExpression::Kind::Reference:
            return named(expression.name);
        case ScriptExpression::Kind::Join:
            return joined(expression.parts);
        }
        Q_UNREACHABLE();
    }

    ScriptValue named(const QString& name)
    {
        if (const auto variable = m_variables.constFind(name); variable != m_variables.cend())
            return *variable;
        if (const auto word = constant(name))
            return *word;
        return m_player.property(name);
    }

    QString joined(const std::vector<ScriptExpression>& parts)
    {
        QString all;
        for (const auto& part : parts) {
            const QString text = this->text(part);
            m_written += text.size();
            if (m_written > ScriptEvaluator::longestText)
                throw ScriptError{QStringLiteral("The script writes too much.")};
            all += text;
        }
        return all;
    }

    QString text(const ScriptExpression& expression)
    {
        if (const auto text = ScriptValues::text(bareValue(expression)))
            return *text;
        throw ScriptError{QStringLiteral("Can’t make this into text: %1").arg(expression.name)};
    }

    ScriptablePlayer& m_player;
    QHash<QString, ScriptValue> m_variables;
    ScriptValue m_result;
    bool m_hasReturned = false;
    qsizetype m_written = 0;
};
} // namespace

ScriptResult ScriptEvaluator::evaluate(const PlayerScript& script, ScriptablePlayer& player)
{
    ScriptResult result;
    try {
        const ScriptValue value = Evaluation(player).run(script.statements);
        result.stringValue = ScriptValues::text(value);
        if (const auto* data = std::get_if<QByteArray>(&value))
            result.data = *data;
    } catch (const ScriptError& error) {
        result.error = error.description;
    }
    return result;
}
