import QtQuick
import QtTest

// The app with a mouse and a keyboard: the file dialogs open, rows delete by a
// mouse drag and by their context menu and come back with Undo, and the keys
// that answer alerts, go back, move the focus and turn the date wheels.
TestCase {
    id: test
    name: "Desktop"
    when: windowShown
    property var window

    function initTestCase() {
        library.addBook("Dune", "Frank Herbert", "Reread for the film.", new Date(2025, 2, 5))
        library.addBook("Emma", "Jane Austen",
                        "First line of a long note.\nSecond line, and a third one that runs on and on past the edge of the card.\nThird.\nFourth.",
                        new Date(2025, 5, 12))
        library.addBook("三体 📚", "Liu Cixin", "", new Date(2025, 9, 1))
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.status, Component.Ready, component.errorString())
        window = component.createObject(null, { appDelegate: testApp })
        verify(window)
        waitForRendering(window.contentItem)
    }
    function cleanupTestCase() { window.destroy() }

    function page() { return window.pageStack.currentItem }
    function arrive(title) {
        tryCompare(page(), "title", title)
        wait(400)
    }
    function swipeOpen(row) {
        mouseDrag(row, row.width - 20, row.height / 2, -160, 0)
        tryCompare(row.swipe, "position", -1)
    }
    // The row on top of the list (itemAtIndex may still hand out a removed row).
    function firstRow(list) {
        const item = list.itemAt(list.width / 2, list.contentY + list.topMargin + 5)
        return item ? item.text : ""
    }
    function undo() {
        const notice = findChild(window.contentItem, "notice")
        tryCompare(notice, "shown", true)
        mouseClick(findChild(notice, "noticeAction"))
        tryCompare(notice, "visible", false)
    }

    function test_1_fileDialogs_data() {
        return [
            { tag: "cover folder", target: "NewBook", button: "PhotoLibraryButton", dialog: "coverPicker" },
            { tag: "import file", target: "Import", button: "LoadFileButton", dialog: "documentPicker" },
        ]
    }
    function test_1_fileDialogs(data) {
        window.openPage(data.target)
        tryVerify(() => page().title.length > 0)
        wait(400)
        const dialog = findChild(page(), data.dialog)
        verify(dialog)
        const button = findChild(page(), data.button)
        button.clicked()
        tryCompare(dialog, "visible", true)
        wait(300)
        shots.save(window, "dialog-" + data.target.toLowerCase())
        dialog.reject()
        tryCompare(dialog, "visible", false)
        window.back()
        wait(400)
    }

    function test_2_bookListDeleteAndUndo() {
        window.openPage("ListStyle")
        arrive("Book List")
        const list = findChild(page(), "bookList")
        tryCompare(list, "count", 3)
        shots.save(window, "book-list")

        swipeOpen(list.itemAtIndex(0))
        shots.save(window, "book-list-swiped")
        const action = findChild(list.itemAtIndex(0), "deleteAction")
        mouseClick(action)
        tryCompare(list, "count", 2)
        compare(library.bookCount(), 2)
        wait(200)
        shots.save(window, "book-list-deleted")
        undo()
        tryCompare(list, "count", 3)
        compare(library.bookCount(), 3)

        const row = list.itemAtIndex(1)
        mouseClick(row, row.width / 2, row.height / 2, Qt.RightButton)
        const menu = findChild(row, "rowMenu")
        tryCompare(menu, "opened", true)
        shots.save(window, "book-list-menu")
        mouseClick(findChild(menu.contentItem, "menuDelete"))
        tryCompare(list, "count", 2)
        compare(library.bookCount(), 2)
        undo()
        tryCompare(list, "count", 3)
        window.back()
        wait(400)
    }

    function test_3_referenceDeleteAndKeys() {
        window.openPage("GenreReferenceList")
        arrive("Genre List")
        const rows = findChild(page(), "tableView")
        tryCompare(rows, "count", 29)
        swipeOpen(rows.itemAtIndex(0))
        mouseClick(findChild(rows.itemAtIndex(0), "deleteAction"))
        tryCompare(rows, "count", 28)
        shots.save(window, "genre-deleted")
        tryVerify(() => firstRow(rows) === "Autobiography")
        undo()
        tryCompare(rows, "count", 29)
        tryVerify(() => firstRow(rows) === "Action Adventure")

        // A long press of a finger offers the same menu.
        const row = rows.itemAtIndex(2)
        touchEvent(row).press(0, row, row.width / 2, row.height / 2).commit()
        const menu = findChild(row, "rowMenu")
        tryCompare(menu, "opened", true, 3000)
        touchEvent(row).release(0, row, row.width / 2, row.height / 2).commit()
        menu.close()
        tryCompare(menu, "visible", false)

        // The add screen: the name field has the keyboard; Enter answers the
        // alert, Escape goes back.
        mouseClick(findChild(window.header, "AddButton"))
        arrive("Add Genre")
        const field = findChild(page(), "GenreTextField")
        verify(field.activeFocus)
        for (const c of "Crime")
            keyClick(c)
        mouseClick(findChild(window.header, "SaveButton"))
        const alert = findChild(page(), "alert")
        tryCompare(alert, "opened", true)
        keyClick(Qt.Key_Return)

        tryCompare(alert, "visible", false)
        compare(page().title, "Add Genre")
        keyClick(Qt.Key_Escape)
        arrive("Genre List")
        keyClick(Qt.Key_Left, Qt.AltModifier)
        arrive("Tomewise")
    }

    function test_4_tabAndDateWheel() {
        window.openPage("DefaultSettings")
        arrive("Default Settings")
        mouseClick(findChild(page(), "DefaultDateSwitch"))
        mouseClick(findChild(page(), "DateWheelSwitch"))
        const wheels = findChild(page(), "datePickerWheels")
        tryCompare(wheels, "visible", true)
        const picker = findChild(page(), "datePickerView")
        const month = picker.month
        const monthWheel = wheels.children[0]
        mouseWheel(monthWheel, monthWheel.width / 2, monthWheel.height / 2, 0, -120)
        tryCompare(picker, "month", month % 12 + 1)

        keyClick(Qt.Key_Tab)
        tryVerify(() => findChild(window.contentItem, "focusRing") !== null)
        wait(200)
        shots.save(window, "settings-focus-ring")
        keyClick(Qt.Key_Escape)
        arrive("Tomewise")
    }
}
