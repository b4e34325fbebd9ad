#include "platform/linux/scripting/ScriptLexer.h"

#include <QStringView>

namespace {
using Kind = ScriptToken::Kind;

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

class Lexer
{
public:
    explicit Lexer(QStringView source) : m_source(source) {}

    std::optional<QList<ScriptToken>> run()
    {
        while (m_at < m_source.size()) {
            if (!takeOne())
                return std::nullopt;
        }
        endLine();
        return m_tokens;
    }

private:
    bool takeOne()
    {
        const QChar character = m_source.at(m_at);
        if (isLetter(character)) {
            take(Kind::Word, [](QChar each) { return isLetter(each) || isDigit(each); });
            return true;
        }
        if (isDigit(character) || character == u'-')
            return takeNumber();
        ++m_at;
        if (character == u'"')
            return takeString();
        if (character == u'\n')
            endLine();
        else if (character == u'&')
            m_tokens.append({Kind::Join});
        else if (character == u'(')
            m_tokens.append({Kind::Open});
        else if (character == u')')
            m_tokens.append({Kind::Close});
        else
            return character == u' ' || character == u'\t';
        return true;
    }

    template <typename Belongs>
    void take(Kind kind, Belongs belongs)
    {
        const qsizetype start = m_at;
        while (++m_at < m_source.size() && belongs(m_source.at(m_at))) {
        }
        m_tokens.append({kind, m_source.sliced(start, m_at - start).toString()});
    }

    bool takeNumber()
    {
        take(Kind::Number, [](QChar each) { return isDigit(each) || each == u'.'; });
        bool isNumber = false;
        m_tokens.constLast().text.toDouble(&isNumber);
        return isNumber;
    }

    bool takeString()
    {
        QString text;
        while (m_at < m_source.size()) {
            const QChar character = m_source.at(m_at++);
            if (character == u'"') {
                m_tokens.append({Kind::String, text});
                return true;
            }
            if (character != u'\\') {
                text.append(character);
            } else if (const auto meant = escaped()) {
                text.append(*meant);
            } else {
                return false;
            }
        }
        return false;
    }

    std::optional<QChar> escaped()
    {
        if (m_at == m_source.size())
            return std::nullopt;
        switch (m_source.at(m_at++).unicode()) {
        case u'n':
            return u'\n';
        case u't':
            return u'\t';
        case u'r':
            return u'\r';
        case u'"':
            return u'"';
        case u'\\':
            return u'\\';
        default:
            return std::nullopt;
        }
    }

    void endLine()
    {
        if (!m_tokens.isEmpty() && m_tokens.constLast().kind != Kind::LineEnd)
            m_tokens.append({Kind::LineEnd});
    }

    const QStringView m_source;
    qsizetype m_at = 0;
    QList<ScriptToken> m_tokens;
};
} // namespace

std::optional<QList<ScriptToken>> ScriptLexer::tokens(const QString& source)
{
    return Lexer(source).run();
}
