#pragma once

#include <QObject>

#include <utility>

/// A source with one published number, whose sets publish equal values too.
class Published : public QObject
{
    Q_OBJECT

public:
    int number() const { return m_number; }
    const QString& text() const { return m_text; }

    void setNumber(int number)
    {
        m_number = number;
        Q_EMIT numberChanged();
    }
    void setText(QString text)
    {
        m_text = std::move(text);
        Q_EMIT textChanged();
    }

Q_SIGNALS:
    void numberChanged();
    void textChanged();

private:
    int m_number = 0;
    QString m_text;
};
