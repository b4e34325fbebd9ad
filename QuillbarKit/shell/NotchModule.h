#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <optional>
#include <utility>

/// A view to be made where it is shown: the QML type and the properties it is given.
struct ModuleView
{
    Q_GADGET
    Q_PROPERTY(QUrl source MEMBER source)
    Q_PROPERTY(QVariantMap properties MEMBER properties)
    Q_PROPERTY(bool exists READ exists)

public:
    QUrl source;
    QVariantMap properties;

    bool exists() const { return !source.isEmpty(); }

    /// The view of that type in our own module.
    static ModuleView named(const QString& type, QVariantMap properties)
    {
        return {QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/%1.qml").arg(type)), std::move(properties)};
    }
};

/// What every module of the panel fulfils. A module is a thin adapter: it names itself and makes views from
/// a service that it holds. Members are read fresh each time. Main thread only.
class NotchModule
{
public:
    virtual ~NotchModule() = default;

    /// Stable key, used in settings and in PanelState::activeModuleID.
    virtual QString id() const = 0;
    virtual QString title() const = 0;
    /// The symbol drawn in the icon bar.
    virtual QString iconSystemName() const = 0;
    /// The module wants the peek space beside the closed notch.
    virtual bool isActive() const = 0;
    /// A higher value wins the peek space.
    virtual int peekPriority() const { return 0; }
    /// The content takes the whole drawer, laid out edge to edge.
    virtual bool fillsAvailableHeight() const { return false; }
    /// Height of the drawer for this module in points; none means the default.
    virtual std::optional<double> preferredContentHeight() const { return std::nullopt; }
    virtual ModuleView makeExpandedView() const = 0;
    virtual std::optional<ModuleView> makePeekLeading() const { return std::nullopt; }
    virtual std::optional<ModuleView> makePeekTrailing() const { return std::nullopt; }
};
