import QtQuick
import QtTest

PageCase {
    name: "MainMenu"

    function test_1_closedAtStart() {
        compare(page().title, "Tomewise")
        verify(findChild(page(), "ControlButton").visible)
        verify(!findChild(page(), "AddBookButton").visible)
        shot("main-menu-closed")
    }

    function test_2_toggleAndReturn() {
        const overview = findChild(page(), "OverviewButton")
        mouseClick(findChild(page(), "ControlButton"))
        tryCompare(overview, "visible", true)
        for (const name of ["ListStyleButton", "ListByGroupButton", "AddBookButton", "PrintButton",
                            "DefaultSettingsButton", "ReferenceListButton", "ImportExportButton",
                            "RateShareButton"])
            verify(findChild(page(), name).visible, name)
        shot("main-menu-open")

        mouseClick(overview)
        tryCompare(page(), "title", "My Tomewise Overview")
        const pdf = findChild(page(), "pdfView")
        verify(pdf)
        tryVerify(() => pdf.document.pageCount >= 1)
        shot("overview")

        window.back()
        tryCompare(page(), "title", "Tomewise")
        tryCompare(findChild(page(), "OverviewButton"), "visible", false)
    }
}
