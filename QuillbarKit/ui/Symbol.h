#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// One symbol in one colour, by its name. The names and the icons that stand for them are listed in
/// symbols.txt; a name that is not there stops the process.
class Symbol : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Size of the text that the symbol would stand beside, in points. The symbol itself is somewhat larger.
    Q_PROPERTY(double pointSize READ pointSize WRITE setPointSize NOTIFY pointSizeChanged)
    /// As heavy as semibold text beside it.
    Q_PROPERTY(bool semibold READ isSemibold WRITE setSemibold NOTIFY semiboldChanged)

public:
    explicit Symbol(QQuickItem* parent = nullptr);

    QString name() const { return m_name; }
    void setName(const QString& name);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    double pointSize() const { return m_pointSize; }
    void setPointSize(double pointSize);

    bool isSemibold() const { return m_isSemibold; }
    void setSemibold(bool semibold);

    static bool exists(const QString& name);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();
    void pointSizeChanged();
    void semiboldChanged();

private:
    QString m_name;
    QColor m_color = Qt::white;
    double m_pointSize = 13;
    bool m_isSemibold = false;
};
