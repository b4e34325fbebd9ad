#include "platform/linux/scripting/ScriptParser.h"

#include "platform/linux/scripting/ScriptLexer.h"

#include <QStringList>

#include <utility>

namespace {
using Kind = ScriptToken::Kind;

/// Words that end a name.
bool isKeyword(const QString& word)
{
    static const QStringList keywords{
        QStringLiteral("application"), QStringLiteral("as"),     QStringLiteral("end"),
        QStringLiteral("error"),       QStringLiteral("get"),    QStringLiteral("if"),
        QStringLiteral("is"),          QStringLiteral("not"),    QStringLiteral("of"),
        QStringLiteral("on"),          QStringLiteral("return"), QStringLiteral("set"),
        QStringLiteral("tell"),        QStringLiteral("then"),   QStringLiteral("to"),
        QStringLiteral("try"),
    };
    return keywords.contains(word);
}

bool isVerb(const QString& name)
{
    return name == u"playpause" || name == u"next track" || name == u"previous track";
}

/// Thrown at the first token that has no place; it doesn't leave this file.
struct NoScript
{};

class Parser
{
public:
    explicit Parser(QList<ScriptToken> tokens) : m_tokens(std::move(tokens)) {}

    PlayerScript script()
    {
        PlayerScript script;
        expectWord("tell");
        expectWord("application");
        script.application = expect(Kind::String);
        if (takeWord("to")) {
            script.statements.push_back(statement());
        } else {
            expect(Kind::LineEnd);
            script.statements = statementsUntil("end");
            expectWord("end");
            expectWord("tell");
            expect(Kind::LineEnd);
        }
        require(m_at == m_tokens.size());
        return script;
    }

private:
    class Nested
    {
    public:
        explicit Nested(int& depth) : m_depth(depth) { require(++m_depth <= ScriptParser::deepestNesting); }
        ~Nested() { --m_depth; }
        Nested(const Nested&) = delete;
        Nested& operator=(const Nested&) = delete;

    private:
        int& m_depth;
    };

    static void require(bool holds)
    {
        if (!holds)
            throw NoScript();
    }

    bool is(Kind kind) const { return m_at < m_tokens.size() && m_tokens.at(m_at).kind == kind; }

    bool isWord(const char* word) const
    {
        return is(Kind::Word) && m_tokens.at(m_at).text == QLatin1String(word);
    }

    bool isName() const { return is(Kind::Word) && !isKeyword(m_tokens.at(m_at).text); }

    bool take(Kind kind)
    {
        const bool found = is(kind);
        m_at += found ? 1 : 0;
        return found;
    }

    bool takeWord(const char* word)
    {
        const bool found = isWord(word);
        m_at += found ? 1 : 0;
        return found;
    }

    QString expect(Kind kind)
    {
        require(is(kind));
        return m_tokens.at(m_at++).text;
    }

    void expectWord(const char* word) { require(takeWord(word)); }

    std::vector<ScriptStatement> statementsUntil(const char* end, const char* otherEnd = nullptr)
    {
        std::vector<ScriptStatement> statements;
        while (!isWord(end) && !(otherEnd != nullptr && isWord(otherEnd)))
            statements.push_back(statement());
        return statements;
    }

    /// With the end of its line.
    ScriptStatement statement()
    {
        const Nested nested(m_depth);
        ScriptStatement statement;
        if (takeWord("try"))
            return tryStatement();
        if (takeWord("if")) {
            statement.kind = ScriptStatement::Kind::If;
            statement.expression = expression();
            expectWord("is");
            statement.isNegated = takeWord("not");
            statement.other = expression();
            expectWord("then");
            statement.body.push_back(this->statement());
            return statement;
        }
        if (takeWord("set")) {
            statement.kind = ScriptStatement::Kind::Set;
            statement.name = name();
            expectWord("to");
            statement.expression = expression();
        } else if (takeWord("return")) {
            statement.kind = ScriptStatement::Kind::Return;
            if (!is(Kind::LineEnd))
                statement.expression = expression();
        } else {
            statement.expression = expression();
            if (statement.expression.kind == ScriptExpression::Kind::Reference &&
                isVerb(statement.expression.name)) {
                statement.kind = ScriptStatement::Kind::Perform;
                statement.name = statement.expression.name;
            }
        }
        expect(Kind::LineEnd);
        return statement;
    }

    ScriptStatement tryStatement()
    {
        ScriptStatement statement;
        statement.kind = ScriptStatement::Kind::Try;
        expect(Kind::LineEnd);
        statement.body = statementsUntil("end", "on");
        if (takeWord("on")) {
            expectWord("error");
            expect(Kind::LineEnd);
            statement.onError = statementsUntil("end");
        }
        expectWord("end");
        expectWord("try");
        expect(Kind::LineEnd);
        return statement;
    }

    ScriptExpression expression()
    {
        ScriptExpression first = operand();
        if (!is(Kind::Join))
            return first;
        ScriptExpression join;
        join.kind = ScriptExpression::Kind::Join;
        join.parts.push_back(std::move(first));
        while (take(Kind::Join))
            join.parts.push_back(operand());
        return join;
    }

    ScriptExpression operand()
    {
        ScriptExpression operand = bareOperand();
        while (takeWord("as")) {
            require(takeWord("text") || takeWord("string"));
            operand.isText = true;
        }
        return operand;
    }

    ScriptExpression bareOperand()
    {
        ScriptExpression operand;
        if (take(Kind::Open)) {
            const Nested nested(m_depth);
            operand = expression();
            expect(Kind::Close);
        } else if (is(Kind::String)) {
            operand.literal = expect(Kind::String);
        } else if (is(Kind::Number)) {
            operand.literal = expect(Kind::Number).toDouble();
        } else {
            takeWord("get");
            operand.kind = ScriptExpression::Kind::Reference;
            operand.name = name();
        }
        return operand;
    }

    /// As the script writes it, with one blank between the words: "artwork 1 of current track".
    QString name()
    {
        QStringList words;
        do {
            if (!words.isEmpty())
                words.append(QStringLiteral("of"));
            require(isName());
            while (isName())
                words.append(expect(Kind::Word));
            if (is(Kind::Number))
                words.append(expect(Kind::Number));
        } while (takeWord("of"));
        return words.join(u' ');
    }

    const QList<ScriptToken> m_tokens;
    qsizetype m_at = 0;
    int m_depth = 0;
};
} // namespace

std::optional<PlayerScript> ScriptParser::parse(const QString& source)
{
    if (source.size() > longestSource)
        return std::nullopt;
    auto tokens = ScriptLexer::tokens(source);
    if (!tokens)
        return std::nullopt;
    try {
        return Parser(*std::move(tokens)).script();
    } catch (const NoScript&) {
        return std::nullopt;
    }
}
