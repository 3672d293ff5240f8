import QtQuick
import QtTest

// The book lists clicked through: cards, then A-Z with its index, a search,
// pictures and the grid, each chosen on the switcher and remembered.
TestCase {
    id: test
    name: "BookLists"
    when: windowShown
    property var window
    property int books: 0

    function initTestCase() {
        books = library.seed()
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.status, Component.Ready, component.errorString())
        window = component.createObject(null, { appDelegate: testApp })
        verify(window)
        waitForRendering(window.contentItem)
    }
    function cleanupTestCase() { window.destroy() }

    function page() { return window.pageStack.currentItem }
    function header() { return findChild(page(), "sectionHeader").text }
    function choose(key) {
        mouseClick(findChild(page(), "switch_" + key))
        tryCompare(page(), "pageTarget", key === "cards" ? "ListStyle" : "BookShelf")
        if (key !== "cards")
            tryCompare(page().controller, "mode", key)
        wait(400) // covers arrive from the worker
    }

    function test_1_cardsThenAz() {
        mouseClick(findChild(page(), "ControlButton"))
        const entry = findChild(page(), "ListStyleButton")
        tryCompare(entry, "visible", true)
        wait(250)
        mouseClick(entry)
        tryCompare(page(), "pageTarget", "ListStyle")
        tryCompare(findChild(page(), "sectionHeader"), "text", books + " Books")
        wait(400)
        shots.save(window, "list-cards")

        choose("az")
        compare(header(), books + " Books")
        const list = findChild(page(), "bookList")
        compare(list.count, books)
        shots.save(window, "list-az")
    }

    function test_2_indexJumps() {
        const index = findChild(page(), "sectionIndex")
        const list = findChild(page(), "bookList")
        const m = page().controller.alphabet.indexOf("M")
        const y = (m + 0.5) * index.letterHeight
        mousePress(index, index.width / 2, y)
        wait(200)
        shots.save(window, "list-az-index")
        mouseRelease(index, index.width / 2, y)
        const first = list.indexAt(10, list.contentY + 40)
        compare(first, page().controller.rowOfLetter("M"))
    }

    function test_3_search() {
        const search = findChild(page(), "searchBar")
        mouseClick(search)
        keyClick(Qt.Key_J)
        keyClick(Qt.Key_A)
        keyClick(Qt.Key_N)
        tryCompare(findChild(page(), "sectionHeader"), "text", "3 Books") // Emma, Jane Eyre, Persuasion
        wait(300)
        shots.save(window, "list-az-search")
        search.text = ""
        page().controller.searchText = ""
    }

    function test_4_picturesAndGrid() {
        choose("pictures")
        compare(testApp.state.listMode, "Graphic")
        tryCompare(findChild(page(), "bookList").itemAtIndex(0), "title", "Oryx and Crake") // latest read first
        shots.save(window, "list-pictures")
        choose("grid")
        compare(findChild(page(), "bookGrid").count, books)
        shots.save(window, "list-grid")
        choose("cards")
        compare(testApp.state.listMode, "List")
    }
}
