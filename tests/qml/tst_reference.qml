import QtQuick
import QtTest

// The reference-list pages clicked through: hub, genre list, search, a
// refused add, a rename, and the settings page's style switches.
TestCase {
    id: test
    name: "ReferencePages"
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
    function rows() { return findChild(page(), "tableView") }
    // Waits for the page's push or pop transition to end.
    function arrive(title) {
        tryCompare(page(), "title", title)
        wait(400)
    }
    function typeText(text) {
        for (const c of text)
            keyClick(c)
    }

    function test_1_genreList() {
        window.openPage("ReferenceList")
        arrive("Reference List")
        shots.save(window, "reference-hub")
        mouseClick(findChild(page(), "GenreButton"))
        arrive("Genre List")
        tryCompare(rows(), "count", 29)

        const search = findChild(page(), "searchBar")
        compare(search.placeholderText, "Search by Genre")
        mouseClick(search)
        typeText("MYST")
        tryCompare(rows(), "count", 1)
        compare(rows().itemAtIndex(0).text, "Mystery")
        shots.save(window, "genre-search")
        search.clear()
        search.textEdited()
        tryCompare(rows(), "count", 29)
    }

    function test_2_refusedAddThenRename() {
        mouseClick(findChild(window.header, "AddButton"))
        arrive("Add Genre")
        mouseClick(findChild(page(), "GenreTextField"))
        typeText("Crime")
        mouseClick(findChild(window.header, "SaveButton"))
        const alert = findChild(page(), "alert")
        tryCompare(alert, "opened", true)
        compare(alert.title, "Record not Saved!")
        compare(alert.message, "Duplicates not allowed")
        shots.save(window, "genre-add-duplicate")
        mouseClick(findChild(alert.footer, "alertButton_OK"))
        tryCompare(alert, "visible", false)
        compare(page().title, "Add Genre")
        window.back()
        arrive("Genre List")

        mouseClick(rows().itemAtIndex(0))
        arrive("Edit Genre")
        const field = findChild(page(), "GenreTextField")
        compare(field.text, "Action Adventure")
        field.selectAll()
        mouseClick(field)
        keyClick(Qt.Key_End)
        typeText("s")
        mouseClick(findChild(window.header, "SaveButton"))
        arrive("Genre List")
        tryCompare(rows().itemAtIndex(0), "text", "Action Adventures")
        window.back()
        window.back()
    }

    function test_3_settingsStyles() {
        window.openPage("DefaultSettings")
        arrive("Default Settings")
        const wheel = findChild(page(), "DateWheelSwitch")
        const inline = findChild(page(), "DateInlineSwitch")
        mouseClick(wheel)
        tryCompare(wheel, "checked", true)
        mouseClick(inline)
        tryCompare(inline, "checked", true)
        compare(wheel.checked, false)
        verify(findChild(page(), "datePickerInline").visible)
        mouseClick(inline) // off: the switch goes off, nothing else changes
        tryCompare(inline, "checked", false)
        verify(findChild(page(), "datePickerInline").visible)
        window.back()
    }
}
