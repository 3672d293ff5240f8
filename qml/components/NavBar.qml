import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// The navigation bar: back, the page's title, the page's own actions.
ToolBar {
    id: bar
    property Item page
    property bool canGoBack: false
    signal backClicked()

    implicitHeight: 52
    background: Rectangle { color: Theme.primary }

    RowLayout {
        anchors.fill: parent
        spacing: 0
        ToolButton {
            objectName: "backButton"
            visible: bar.canGoBack
            contentItem: Icon { name: "arrow_back_ios"; color: "white"; size: 22 }
            onClicked: bar.backClicked()
            Accessible.name: "Back"
        }
        Item { Layout.preferredWidth: bar.canGoBack ? 0 : 12 }
        Label {
            Layout.fillWidth: true
            text: bar.page ? bar.page.title : ""
            color: "white"
            font.pixelSize: 19
            font.bold: true
            elide: Text.ElideRight
            horizontalAlignment: bar.canGoBack ? Text.AlignHCenter : Text.AlignLeft
        }
        Loader {
            id: actions
            sourceComponent: bar.page ? bar.page.barActions : null
            // Without actions it takes no room from the title.
            visible: !!item
            Layout.preferredWidth: item ? item.implicitWidth : 0
        }
        Item { Layout.preferredWidth: 8; visible: !bar.page || !bar.page.barActions }
    }
}
