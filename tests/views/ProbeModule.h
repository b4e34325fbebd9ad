#pragma once

#include "shell/NotchModule.h"

#include <QFile>
#include <QTemporaryDir>

#include <utility>

/// A module whose views can be told apart and keep what a test writes into them. The view in the drawer is
/// the object named "<id> expanded", those beside the notch "<id> leading" and "<id> trailing".
class ProbeModule final : public NotchModule
{
public:
    explicit ProbeModule(QString id) : m_id(std::move(id))
    {
        QFile file(m_folder.filePath(QStringLiteral("Probe.qml")));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("ProbeModule: no place for a view");
        file.write("import QtQuick\n"
                   "FocusScope {\n"
                   "    property string typed\n"
                   "    implicitWidth: 100\n"
                   "    implicitHeight: 18\n"
                   "}\n");
    }

    bool active = false;
    bool fills = false;

    QString id() const override { return m_id; }
    QString title() const override { return m_id; }
    QString iconSystemName() const override { return QStringLiteral("calendar"); }
    bool isActive() const override { return active; }
    bool fillsAvailableHeight() const override { return fills; }
    ModuleView makeExpandedView() const override { return view(QStringLiteral("expanded")); }
    std::optional<ModuleView> makePeekLeading() const override { return view(QStringLiteral("leading")); }
    std::optional<ModuleView> makePeekTrailing() const override { return view(QStringLiteral("trailing")); }

private:
    ModuleView view(const QString& place) const
    {
        return {QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("Probe.qml"))),
                {{QStringLiteral("objectName"), m_id + u' ' + place}}};
    }

    QString m_id;
    QTemporaryDir m_folder;
};
