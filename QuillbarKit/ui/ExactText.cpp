#include "ui/ExactText.h"

#include <QTextDocument>

void ExactText::begin(const QString& given)
{
    m_given = given;
    m_untouched = raw();
}

QString ExactText::text() const
{
    QString text = raw();
    if (text == m_untouched)
        return m_given;
    // What the document keeps a new line as, and what Shift with Return makes.
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

QString ExactText::raw() const
{
    return m_document ? m_document->textDocument()->toRawText() : QString();
}
