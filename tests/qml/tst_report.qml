import QtQuick
import QtTest

// The report on screen shows each book's cover, drawn where the reader looks.
PageCase {
    name: "Report"

    function initTestCase() {
        library.seed()
        openWindow()
    }

    // True when some pixel of the view is a colour no text is drawn in.
    function showsAPicture(view) {
        const image = grabImage(view)
        for (let y = 0; y < view.height; y += 4) {
            for (let x = 0; x < view.width; x += 4) {
                const r = image.red(x, y), g = image.green(x, y), b = image.blue(x, y)
                if (Math.max(r, g, b) - Math.min(r, g, b) > 60)
                    return true
            }
        }
        return false
    }

    function test_coversShowWhileScrolling() {
        openMenuEntry("PrintButton")
        arrive("Print Report")
        mouseClick(findChild(page(), "CreateFileButton"))
        tryCompare(findChild(page(), "PrintButton"), "enabled", true)
        const view = findChild(page(), "FileTextView")
        tryVerify(() => view.contentHeight > view.height * 4)
        waitForRendering(view)
        shot("report-top")
        // From the keyboard, a screen at a time, as far as the end.
        mouseClick(view)
        let seen = 0
        for (let i = 0; i < 4; ++i) {
            const before = view.contentY
            keyClick(Qt.Key_PageDown)
            verify(view.contentY > before)
            waitForRendering(view)
            if (showsAPicture(view))
                ++seen
        }
        verify(seen >= 3, seen)
        keyClick(Qt.Key_End)
        compare(view.contentY + view.height, view.contentHeight)
        shot("report-end")
    }
}
