import QtQuick
import QtTest

// The rate-and-share page, and the review card over the detail screen.
PageCase {
    name: "FeedbackPages"

    function initTestCase() {
        library.addBook("Good Omens", "Neil Gaiman", "", new Date(2026, 10, 21))
        openWindow()
    }
    function tapRow(row) { mouseClick(findChild(page(), "RateShareRow" + row)) }
    function sceneRect(item) { return item.mapToItem(null, 0, 0, item.width, item.height) }

    function test_1_rowsWithoutMessagesAlert() {
        library.setMessaging(false)
        window.openPage("RateShare")
        arrive("Rate & Share")
        shot("rate-share")
        tapRow(1)
        compare(answer()[0], "Can't Send Text Message")
        tapRow(4)
        compare(answer()[0], "Can't Send Email")
        library.setMessaging(true)
        window.back()
        arrive("Tomewise")
    }

    // A text alone shares without an empty picture frame; the web site row
    // shares the invitation and the address apart.
    function test_2_shareSheets() {
        library.setSetting("Feedback.website", "https://www.example.org/tomewise.html")
        window.openPage("RateShare")
        arrive("Rate & Share")
        const sheet = findChild(page(), "shareSheet")
        tapRow(1)
        tryCompare(sheet, "opened", true)
        compare(findChild(sheet, "shareImage").visible, false)
        shot("share-text-only")
        sheet.close()
        tryCompare(sheet, "visible", false)

        tapRow(2)
        tryCompare(sheet, "opened", true)
        compare(sheet.links.length, 1)
        compare(String(sheet.links[0]), "https://www.example.org/tomewise.html")
        compare(sheet.text, "Click the following link to visit the Tomewise App website")
        shot("rate-share-sheet")
        sheet.close()
        tryCompare(sheet, "visible", false)
        verify(window.unwind("unwindToMenu"))
        tryCompare(page(), "title", "Tomewise")
    }

    // The card takes no focus, keeps clear of the field being typed in, and
    // its Rate opens the store's review page.
    function test_3_reviewCard_data() {
        return [
            { tag: "typing at the top", field: "bookNameTextField", button: "reviewRateButton", opened: 1 },
            { tag: "typing at the bottom", field: "NotesTextView", button: "reviewNotNowButton", opened: 0 },
        ]
    }
    function test_3_reviewCard(data) {
        window.openPage("ListStyle")
        arrive("Book List")
        mouseClick(findChild(page(), "bookList").itemAtIndex(0))
        arrive("Book Detail")
        const typing = findChild(page(), data.field)
        verify(typing)
        if (data.field === "NotesTextView") {
            // Down to the window's bottom edge, where the card would sit.
            const flick = findChild(page(), "formFlickable")
            flick.contentY += sceneRect(typing).bottom - (window.height - 20)
        }
        typing.forceActiveFocus()
        verify(sceneRect(typing).bottom <= window.height)

        const before = library.openedUrls()
        testApp.platform.storeReviewRequested()
        const card = findChild(window, "reviewCard")
        tryCompare(card, "opened", true)
        shot("review-card-" + data.field)
        const cardItem = card.contentItem.parent
        verify(!rectsMeet(sceneRect(cardItem), sceneRect(typing)))
        verify(typing.activeFocus)

        mouseClick(findChild(cardItem, data.button))
        tryCompare(card, "visible", false)
        compare(library.openedUrls() - before, data.opened)
        window.back()
        arrive("Book List")
        window.back()
        arrive("Tomewise")
    }
    function rectsMeet(a, b) {
        return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height
    }
}
