import QtQuick
import QtTest

// The reference-list pages clicked through: hub, genre list, search, a rename.
PageCase {
    name: "ReferencePages"

    function rows() { return findChild(page(), "tableView") }

    function test_1_genreList() {
        window.openPage("ReferenceList")
        arrive("Reference List")
        shot("reference-hub")
        mouseClick(findChild(page(), "GenreButton"))
        arrive("Genre List")
        tryCompare(rows(), "count", 29)

        const search = findChild(page(), "searchBar")
        compare(search.placeholderText, "Search by Genre")
        mouseClick(search)
        typeText("MYST")
        tryCompare(rows(), "count", 1)
        compare(rows().itemAtIndex(0).text, "Mystery")
        shot("genre-search")
        search.clear()
        search.textEdited()
        tryCompare(rows(), "count", 29)
    }

    function test_2_rename() {
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
}
