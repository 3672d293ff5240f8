import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// Stands where a screen is not built yet.
ScreenPage {
    id: page
    title: Pages.title(pageTarget)

    ColumnLayout {
        anchors.centerIn: parent
        width: parent.width - 64
        spacing: 12
        Icon { name: "construction"; size: 64; color: Theme.muted; Layout.alignment: Qt.AlignHCenter }
        Label {
            text: page.title
            font.pixelSize: 22
            font.bold: true
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: "This screen is coming in a later version of Tomewise."
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.muted
            Layout.fillWidth: true
        }
    }
}
