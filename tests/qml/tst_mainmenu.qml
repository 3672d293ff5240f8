import QtQuick
import QtTest

TestCase {
    id: test
    name: "MainMenu"
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

    function test_1_closedAtStart() {
        compare(page().title, "Tomewise")
        verify(findChild(page(), "ControlButton").visible)
        verify(!findChild(page(), "AddBookButton").visible)
        shots.save(window, "main-menu-closed")
    }

    function test_2_toggleAndReturn() {
        const control = findChild(page(), "ControlButton")
        const overview = findChild(page(), "OverviewButton")
        mouseClick(control)
        tryCompare(overview, "visible", true)
        for (const name of ["ListStyleButton", "ListByGroupButton", "AddBookButton", "PrintButton",
                            "DefaultSettingsButton", "ReferenceListButton", "ImportExportButton",
                            "RateShareButton"])
            verify(findChild(page(), name).visible, name)
        wait(300)
        shots.save(window, "main-menu-open")

        mouseClick(overview)
        tryCompare(page(), "title", "My Tomewise Overview")
        const pdf = findChild(page(), "pdfView")
        verify(pdf)
        tryCompare(pdf.document, "pageCount", pdf.document.pageCount > 0 ? pdf.document.pageCount : 1)
        verify(pdf.document.pageCount >= 1)
        wait(500)
        shots.save(window, "overview")

        window.back()
        tryCompare(page(), "title", "Tomewise")
        tryCompare(findChild(page(), "OverviewButton"), "visible", false)
    }

    function test_3_unbuiltScreenSaysSoAndUnwinds() {
        mouseClick(findChild(page(), "ControlButton"))
        const rate = findChild(page(), "RateShareButton")
        tryCompare(rate, "visible", true)
        wait(250)
        mouseClick(rate)
        tryCompare(page(), "title", "Rate & Share")
        // A text alone shares without an empty picture frame above it.
        tryCompare(window.pageStack, "busy", false)
        mouseClick(findChild(page(), "RateShareRow1"))
        const sheet = findChild(page(), "shareSheet")
        tryCompare(sheet, "opened", true)
        compare(findChild(sheet, "shareImage").visible, false)
        wait(200)
        shots.save(window, "share-text-only")
        sheet.close()
        tryCompare(sheet, "visible", false)
        verify(window.unwind("unwindToMenu"))
        tryCompare(page(), "title", "Tomewise")
    }
}
