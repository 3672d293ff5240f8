import QtQuick
import QtQuick.Controls
import QtTest

PageCase {
    name: "Export"

    // The save dialog writes the name typed into it, without Enter, and says where.
    function test_1_saveDialogWritesTheTypedName() {
        openMenuEntry("ImportExportButton")
        arrive("Import / Export")
        mouseClick(findChild(page(), "ExportEntry"))
        arrive("Export")
        mouseClick(findChild(page(), "ExportButton"))
        compare(answer()[1], "Process Complete - File Ready to Save To Files or Email")

        mouseClick(findChild(page(), "SaveButton"))
        const dialog = findChild(page(), "saveDialog")
        tryCompare(dialog, "opened", true)
        const name = findChild(dialog, "fileName")
        compare(name.text, "Tomewise.csv")
        dialog.folder = "file://" + testApp.dataDirectory
        name.selectAll()
        typeText("typed.csv")
        shot("export-save-dialog-page-test")
        mouseClick(dialog.standardButton(Dialog.Save))
        tryCompare(dialog, "visible", false)
        compare(answer()[1], "The export file was saved to " + testApp.dataDirectory + "/typed.csv")

        // A second save to the same name asks first.
        mouseClick(findChild(page(), "SaveButton"))
        tryCompare(dialog, "opened", true)
        dialog.folder = "file://" + testApp.dataDirectory
        name.text = "typed.csv"
        keyClick(Qt.Key_Return)
        compare(answer("No")[1], "“typed.csv” already exists. Replace it?")
        window.back()
        arrive("Import / Export")
    }
}
