import QtQuick

// Holds one view of a module. The view is made when it is first wanted and kept from then on: trees that are
// made and destroyed again and again leave memory behind.
Loader {
    id: host

    required property bool wanted
    // A ModuleView.
    required property var view

    function load() {
        if (wanted && view.exists && status === Loader.Null)
            setSource(view.source, view.properties);
    }

    // At the end of the turn: at the launch it is not known before which modules the user has enabled.
    onWantedChanged: Qt.callLater(load) // qmllint disable
}
