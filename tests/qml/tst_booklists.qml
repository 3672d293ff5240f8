import QtQuick
import QtTest

// The book lists clicked through: cards, then A-Z with its index, a search,
// pictures and the grid, each chosen on the switcher and remembered.
PageCase {
    name: "BookLists"
    property int books: 0

    function initTestCase() {
        books = library.seed()
        openWindow()
    }
    function header() { return findChild(page(), "sectionHeader").text }
    function choose(key) {
        mouseClick(findChild(page(), "switch_" + key))
        tryCompare(page(), "pageTarget", key === "cards" ? "ListStyle" : "BookShelf")
        if (key !== "cards")
            tryCompare(page().controller, "mode", key)
        wait(400) // covers arrive from the worker
    }

    function test_1_cardsThenAz() {
        openMenuEntry("ListStyleButton")
        tryCompare(page(), "pageTarget", "ListStyle")
        tryCompare(findChild(page(), "sectionHeader"), "text", books + " Books")
        tryCompare(window.pageStack, "busy", false)
        shot("list-cards")

        choose("az")
        compare(header(), books + " Books")
        const list = findChild(page(), "bookList")
        compare(list.count, books)
        shot("list-az")
    }

    function test_2_indexJumps() {
        const index = findChild(page(), "sectionIndex")
        const list = findChild(page(), "bookList")
        const m = page().controller.alphabet.indexOf("M")
        const y = (m + 0.5) * index.letterHeight
        mousePress(index, index.width / 2, y)
        shot("list-az-index")
        mouseRelease(index, index.width / 2, y)
        const first = list.indexAt(10, list.contentY + 40)
        compare(first, page().controller.rowOfLetter("M"))
    }

    function test_3_search() {
        const search = findChild(page(), "searchBar")
        mouseClick(search)
        typeText("jan")
        tryCompare(findChild(page(), "sectionHeader"), "text", "3 Books") // Emma, Jane Eyre, Persuasion
        shot("list-az-search")
        search.text = ""
        page().controller.searchText = ""
    }

    function test_4_picturesAndGrid() {
        choose("pictures")
        compare(testApp.state.listMode, "Graphic")
        tryCompare(findChild(page(), "bookList").itemAtIndex(0), "title", "Oryx and Crake") // latest read first
        shot("list-pictures")
        choose("grid")
        compare(findChild(page(), "bookGrid").count, books)
        shot("list-grid")
        choose("cards")
        compare(testApp.state.listMode, "List")
    }
}
