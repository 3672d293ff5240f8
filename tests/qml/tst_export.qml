import QtQuick
import QtQuick.Controls
import QtTest

TestCase {
    id: test
    name: "Export"
    when: windowShown
    property var window

    function initTestCase() {
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.status, Component.Ready, component.errorString())
        window = component.createObject(null, { appDelegate: testApp })
        verify(window)
        waitForRendering(window.contentItem)
    }
    function cleanupTestCase() { window.destroy() }

    function page() { return window.pageStack.currentItem }

    function answer(button) {
        const alert = findChild(page(), "alert")
        tryCompare(alert, "opened", true)
        const message = alert.message
        mouseClick(findChild(alert.footer, "alertButton_" + button))
        tryCompare(alert, "visible", false)
        return message
    }

    // The save dialog writes the name typed into it, without Enter, and says where.
    function test_saveDialogWritesTheTypedName() {
        mouseClick(findChild(page(), "ControlButton"))
        const entry = findChild(page(), "ImportExportButton")
        tryCompare(entry, "visible", true)
        wait(250)
        mouseClick(entry)
        tryCompare(page(), "title", "Import / Export")
        wait(400)
        mouseClick(findChild(page(), "ExportEntry"))
        tryCompare(page(), "title", "Export")
        wait(400)
        mouseClick(findChild(page(), "ExportButton"))
        compare(answer("OK"), "Process Complete - File Ready to Save To Files or Email")

        mouseClick(findChild(page(), "SaveButton"))
        const dialog = findChild(page(), "saveDialog")
        tryCompare(dialog, "opened", true)
        const name = findChild(dialog, "fileName")
        compare(name.text, "Tomewise.csv")
        dialog.folder = "file://" + testApp.dataDirectory
        name.selectAll()
        for (const c of "typed.csv")
            keyClick(c)
        wait(300)
        shots.save(window, "export-save-dialog-page-test")
        mouseClick(dialog.standardButton(Dialog.Save))
        tryCompare(dialog, "visible", false)
        compare(answer("OK"), "The export file was saved to " + testApp.dataDirectory + "/typed.csv")

        // A second save to the same name asks first.
        mouseClick(findChild(page(), "SaveButton"))
        tryCompare(dialog, "opened", true)
        dialog.folder = "file://" + testApp.dataDirectory
        name.text = "typed.csv"
        keyClick(Qt.Key_Return)
        compare(answer("No"), "“typed.csv” already exists. Replace it?")
    }

    // The import's file picker opens (and needs Qt.labs.folderlistmodel to).
    function test_selectFileOpensThePicker() {
        window.back()
        tryCompare(page(), "title", "Import / Export")
        wait(400)
        mouseClick(findChild(page(), "ImportEntry"))
        tryCompare(page(), "title", "Import")
        wait(400)
        mouseClick(findChild(page(), "LoadFileButton"))
        const picker = findChild(page(), "documentPicker")
        tryCompare(picker, "visible", true)
        wait(300)
        shots.save(window, "import-select-file-page-test")
        picker.reject()
        tryCompare(picker, "visible", false)
    }
}
