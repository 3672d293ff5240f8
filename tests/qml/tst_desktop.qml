import QtQuick
import QtTest

// The app with a mouse and a keyboard: the file dialogs open, rows delete by a
// mouse drag and by their context menu and come back with Undo, the keys
// that answer alerts, go back and move the focus, and the date styles.
PageCase {
    name: "Desktop"

    function initTestCase() {
        library.addBook("Dune", "Frank Herbert", "Reread for the film.", new Date(2025, 2, 5))
        library.addBook("Emma", "Jane Austen",
                        "First line of a long note.\nSecond line, and a third one that runs on and on past the edge of the card.\nThird.\nFourth.",
                        new Date(2025, 5, 12))
        library.addBook("三体 📚", "Liu Cixin", "", new Date(2025, 9, 1))
        openWindow()
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
    function undo() { notice(undefined, true) }

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
        shot("dialog-" + data.target.toLowerCase())
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
        shot("book-list")

        swipeOpen(list.itemAtIndex(0))
        shot("book-list-swiped")
        const action = findChild(list.itemAtIndex(0), "deleteAction")
        mouseClick(action)
        tryCompare(list, "count", 2)
        compare(library.bookCount(), 2)
        shot("book-list-deleted")
        undo()
        tryCompare(list, "count", 3)
        compare(library.bookCount(), 3)

        const row = list.itemAtIndex(1)
        mouseClick(row, row.width / 2, row.height / 2, Qt.RightButton)
        const menu = findChild(row, "rowMenu")
        tryCompare(menu, "opened", true)
        shot("book-list-menu")
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
        shot("genre-deleted")
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
        typeText("Crime")
        mouseClick(findChild(window.header, "SaveButton"))
        const alert = findChild(page(), "alert")
        tryCompare(alert, "opened", true)
        compare([alert.title, alert.message], ["Record not Saved!", "Duplicates not allowed"])
        shot("genre-add-duplicate")
        keyClick(Qt.Key_Return)
        tryCompare(alert, "visible", false)
        compare(page().title, "Add Genre")
        keyClick(Qt.Key_Escape)
        arrive("Genre List")
        keyClick(Qt.Key_Left, Qt.AltModifier)
        arrive("Tomewise")
    }

    function test_4_dateStylesTabAndWheel() {
        window.openPage("DefaultSettings")
        arrive("Default Settings")
        mouseClick(findChild(page(), "DefaultDateSwitch"))
        const wheel = findChild(page(), "DateWheelSwitch")
        const inline = findChild(page(), "DateInlineSwitch")
        mouseClick(wheel)
        const wheels = findChild(page(), "datePickerWheels")
        tryCompare(wheels, "visible", true)
        const picker = findChild(page(), "datePickerView")
        const month = picker.month
        const monthWheel = wheels.children[0]
        mouseWheel(monthWheel, monthWheel.width / 2, monthWheel.height / 2, 0, -120)
        tryCompare(picker, "month", month % 12 + 1)
        // The styles exclude each other; turning one off changes nothing else.
        mouseClick(inline)
        tryCompare(inline, "checked", true)
        compare(wheel.checked, false)
        verify(findChild(page(), "datePickerInline").visible)
        mouseClick(inline)
        tryCompare(inline, "checked", false)
        verify(findChild(page(), "datePickerInline").visible)

        keyClick(Qt.Key_Tab)
        tryVerify(() => findChild(window.contentItem, "focusRing") !== null)
        shot("settings-focus-ring")
        keyClick(Qt.Key_Escape)
        arrive("Tomewise")
    }
}
