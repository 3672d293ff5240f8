import QtQuick
import QtTest

// Delete and Undo with the mouse on the A-Z list, the pictures and the grid:
// the book leaves the list and the store, and Undo brings it back, cover and all.
TestCase {
    id: test
    name: "ShelfUndo"
    when: windowShown
    property var window

    function initTestCase() {
        library.addBook("Dune", "Frank Herbert", "", new Date(2025, 2, 5))
        library.addBook("Emma", "Jane Austen", "", new Date(2025, 5, 12))
        library.addBook("Kindred", "Octavia E. Butler", "", new Date(2025, 9, 1))
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.status, Component.Ready, component.errorString())
        window = component.createObject(null, { appDelegate: testApp })
        verify(window)
        waitForRendering(window.contentItem)
    }
    function cleanupTestCase() { window.destroy() }

    function page() { return window.pageStack.currentItem }
    function titles(view) {
        const out = []
        for (let i = 0; i < view.count; ++i) {
            const item = view.itemAtIndex(i)
            out.push(item ? item.title : "")
        }
        return out
    }

    function test_deleteAndUndo_data() {
        // A-Z by title; pictures and grid newest first.
        return [
            { tag: "az", view: "bookList", row: 1, title: "Emma", by: "swipe" },
            { tag: "pictures", view: "bookList", row: 0, title: "Kindred", by: "menu" },
            { tag: "grid", view: "bookGrid", row: 2, title: "Dune", by: "menu" },
        ]
    }
    function test_deleteAndUndo(data) {
        window.openPage("BookShelf", { initialMode: data.tag })
        tryCompare(page(), "title", "Book List")
        const view = findChild(page(), data.view)
        tryCompare(view, "count", 3)
        wait(300)
        const row = view.itemAtIndex(data.row)
        compare(row.title, data.title)
        verify(row.coverSource !== "")

        if (data.by === "swipe") {
            mouseDrag(row, row.width - 20, row.height / 2, -160, 0)
            tryCompare(row.swipe, "position", -1)
            mouseClick(findChild(row, "deleteAction"))
        } else {
            mouseClick(row, row.width / 2, row.height / 2, Qt.RightButton)
            const menu = findChild(row, data.tag === "grid" ? "cellMenu" : "rowMenu")
            tryCompare(menu, "opened", true)
            mouseClick(findChild(menu.contentItem, data.tag === "grid" ? "cellMenuDelete" : "menuDelete"))
        }
        tryCompare(view, "count", 2)
        compare(library.bookCount(), 2)
        tryVerify(() => titles(view).indexOf(data.title) < 0)

        const notice = findChild(window.contentItem, "notice")
        tryCompare(notice, "shown", true)
        shots.save(window, "shelf-" + data.tag + "-deleted")
        mouseClick(findChild(notice, "noticeAction"))
        tryCompare(view, "count", 3)
        compare(library.bookCount(), 3)
        tryVerify(() => titles(view)[data.row] === data.title)
        const back = view.itemAtIndex(data.row)
        verify(back.coverSource !== "")
        // The cover is read again from the store, not left blank.
        tryVerify(() => findChild(back, "coverImage") && findChild(back, "coverImage").status === Image.Ready)
        shots.save(window, "shelf-" + data.tag + "-undone")
        window.back()
        wait(300)
    }
}
