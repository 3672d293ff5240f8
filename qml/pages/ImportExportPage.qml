import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Tomewise
import "../components"

// Offers the export and the import, each on its own page.
ScreenPage {
    id: page
    title: Pages.title(pageTarget)
    unwindTargets: ["unwindToImportExport"]

    ColumnLayout {
        x: Theme.margin
        y: Theme.margin
        width: parent.width - 2 * Theme.margin
        spacing: 12

        Label {
            Layout.fillWidth: true
            text: "Move your log between devices: export it to one file, then import that file on the other device."
            wrapMode: Text.Wrap
            color: Theme.muted
        }
        MenuButton {
            objectName: "ExportEntry"
            Layout.fillWidth: true
            text: "Export"
            iconName: "upload_file"
            onClicked: page.openPage("Export")
        }
        MenuButton {
            objectName: "ImportEntry"
            Layout.fillWidth: true
            text: "Import"
            iconName: "file_open"
            onClicked: page.openPage("Import")
        }
    }
}
