import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import "components"

// Shown instead of the app when another Tomewise has the library open: a
// second one beside it would write over the first's work.
ApplicationWindow {
    id: window
    required property string message

    width: 390
    height: 260
    visible: true
    title: "Tomewise"
    Material.theme: Material.Light
    Material.accent: Theme.accent
    Material.primary: Theme.primary
    color: Theme.paper

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 24
        spacing: 16
        Label {
            text: "Library in Use"
            font.pixelSize: 20
            font.bold: true
            color: Theme.ink
        }
        Label {
            objectName: "inUseMessage"
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: window.message + ".\n\nClose the other Tomewise, then start this one again."
            wrapMode: Text.Wrap
            color: Theme.ink
            font.pixelSize: 15
        }
        Button {
            objectName: "okButton"
            Layout.alignment: Qt.AlignRight
            Layout.minimumWidth: 96
            text: "OK"
            highlighted: true
            focus: true
            onClicked: Qt.quit()
            Keys.onReturnPressed: Qt.quit()
            Keys.onEnterPressed: Qt.quit()
            Keys.onEscapePressed: Qt.quit()
        }
    }
}
