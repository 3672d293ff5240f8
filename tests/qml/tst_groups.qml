import QtQuick
import QtTest
import QtQuick.Controls
import Tomewise

// "List By Group": the tabs, a summary as a list and as a chart, a
// breakdown with its sort menu and search, and the round trip to the detail
// screen and back.
PageCase {
    name: "GroupPages"

    NewBookViewController { id: form; appDelegate: testApp }

    function addBook(name, author, genre, format, rating, date, published) {
        form.viewDidLoad()
        form.bookNameTextField = name
        form.bookAuthorTextField = author
        form.bookCategoryTextField = genre
        form.BookFormatTextField = format
        form.RatingTextField = rating
        form.dateTextField = date
        form.datePublishedTextField = published
        verify(form.SaveNewBook(), name)
    }

    function initTestCase() {
        addBook("Dune", "Frank Herbert", "Science Fiction", "Paperback", "*****", "Mar 7, 2021", "1965")
        addBook("Emma", "Jane Austen", "Classics", "Hardcover", "****", "Jan 9, 2022", "1815")
        addBook("Persuasion", "Jane Austen", "Classics", "Paperback", "****", "May 2, 2020", "1817")
        addBook("The Hobbit", "J.R.R. Tolkien", "Fantasy", "Kindle", "*****", "Aug 1, 2021", "1937")
        openWindow()
    }
    function summary() { return page().current }
    function rowAt(list, i) {
        tryVerify(() => list.itemAtIndex(i) !== null)
        return list.itemAtIndex(i)
    }
    function rowTexts(list) {
        const out = []
        for (let i = 0; i < list.count; ++i) {
            const row = rowAt(list, i)
            out.push(row.value + "=" + row.count)
        }
        return out
    }

    function test_1_tabsAndSummaries() {
        window.openPage("TabBarController")
        tryCompare(page(), "title", "List By Group")
        tryCompare(window.pageStack, "busy", false)
        verify(!window.header.visible) // the tabs carry their own bar
        const bar = findChild(page(), "tabBar")
        compare(bar.count, 7)
        compare(findChild(page(), "tabTitle").text, "Author")
        const list = findChild(summary(), "tableView")
        tryCompare(list, "count", 3)
        compare(rowTexts(list), ["Frank Herbert=1", "J.R.R. Tolkien=1", "Jane Austen=2"])
        compare(findChild(summary(), "sectionHeader").text, "3 Authors")
        shot("summary-author-list")

        const targets = ["AuthorGroup", "FormatGroup", "GenreGroup", "RatingGroup", "SeriesGroup", "YearGroup",
                        "DateReadGroup"]
        for (let i = 0; i < targets.length; ++i) {
            bar.currentIndex = i
            tryVerify(() => summary() && summary().summaryTarget === targets[i])
            shot("summary-" + targets[i] + "-list")
            mouseClick(findChild(page(), "chartButton"))
            tryCompare(summary(), "showChart", true)
            shot("summary-" + targets[i] + "-chart")
        }
        bar.currentIndex = 1
        tryVerify(() => summary().summaryTarget === "FormatGroup")
        compare(findChild(summary(), "sectionHeader").text, "3 Formats")
        const bars = findChild(summary(), "chartBars")
        tryCompare(bars, "count", 3)
        compare(rowAt(bars, 0).modelData.value, "Paperback") // the longest first
        mouseClick(findChild(page(), "chartButton"))
        tryCompare(summary(), "showChart", false)
    }

    function test_2_breakdownSortSearchAndDetail() {
        // A tap on the bar opens the breakdown as a row tap does.
        mouseClick(findChild(page(), "chartButton"))
        const bars = findChild(summary(), "chartBars")
        tryCompare(bars, "count", 3)
        mouseClick(rowAt(bars, 0))
        tryCompare(page(), "title", "Format")
        tryCompare(window.pageStack, "busy", false)
        verify(window.header.visible)
        const list = findChild(page(), "tableView")
        tryCompare(list, "count", 2)
        compare(findChild(page(), "sectionHeader").text, "# of Books: 2")
        compare(rowAt(list, 0).labels[0], "Name: Dune")
        compare(rowAt(list, 0).height, 135)

        mouseClick(findChild(window.header, "SortMenuButton"))
        const menu = findChild(window.header, "sortMenu")
        tryCompare(menu, "opened", true)
        compare(findChild(window.header, "SortMenuButton").text, "Sort by")
        compare(findChild(menu.contentItem, "sortMenuTitle").text, "...")
        shot("breakdown-sort-menu")
        mouseClick(findChild(menu.contentItem, "sortAction2"))
        tryCompare(menu, "visible", false)
        tryVerify(() => list.itemAtIndex(0).labels[0] === "Name: Dune") // ascending by name
        mouseClick(findChild(window.header, "SortMenuButton"))
        tryCompare(menu, "opened", true)
        mouseClick(findChild(menu.contentItem, "sortAction2"))
        tryCompare(menu, "visible", false)
        tryVerify(() => list.itemAtIndex(0) && list.itemAtIndex(0).labels[0] === "Name: Persuasion")

        // Detail and back: showing the breakdown again turns the order.
        mouseClick(rowAt(list, 0))
        tryCompare(page(), "title", "Book Detail")
        tryCompare(window.pageStack, "busy", false)
        compare(findChild(page(), "bookNameTextField").text, "Persuasion")
        compare(testApp.state.callingScreen, "FormatBreakdown")
        mouseClick(findChild(window.header, "backButton"))
        tryCompare(page(), "title", "Format")
        tryCompare(window.pageStack, "busy", false)
        const back = findChild(page(), "tableView")
        tryVerify(() => back.itemAtIndex(0) && back.itemAtIndex(0).labels[0] === "Name: Dune")

        const search = findChild(page(), "searchBar")
        mouseClick(search)
        typeText("pe")
        tryCompare(back, "count", 1)
        compare(findChild(page(), "sectionHeader").text, "# of Books: 1")
        shot("breakdown-search")

        // Swipe and "delete": the book goes, and the count with it.
        const row = rowAt(back, 0)
        row.swipe.open(SwipeDelegate.Right)
        tryCompare(row.swipe, "complete", true)
        mouseClick(findChild(row, "deleteAction"))
        tryCompare(back, "count", 0)
        compare(findChild(page(), "sectionHeader").text, "# of Books: 0")
        // Undo brings it back under the same search; the context menu deletes it again.
        const toast = notice("Deleted \u201cPersuasion\u201d")
        shot("breakdown-deleted")
        mouseClick(findChild(toast, "noticeAction"))
        tryCompare(back, "count", 1)
        compare(findChild(page(), "sectionHeader").text, "# of Books: 1")
        const again = rowAt(back, 0)
        mouseClick(again, again.width / 2, again.height / 2, Qt.RightButton)
        const rowMenu = findChild(again, "rowMenu")
        tryCompare(rowMenu, "opened", true)
        mouseClick(findChild(rowMenu.contentItem, "menuDelete"))
        tryCompare(back, "count", 0)
        tryCompare(toast, "shown", true)

        window.back()
        // The Undo went with the breakdown whose controller would have run it.
        compare(toast.shown, false)
        tryCompare(page(), "title", "List By Group")
        tryCompare(window.pageStack, "busy", false)
        mouseClick(findChild(page(), "menuButton"))
        tryCompare(page(), "title", "Tomewise")
    }
}
