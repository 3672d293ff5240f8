import QtQuick
import QtTest
import TomewiseTest

// The barcode screens from the Add Book form: the photo path (no camera
// here), the camera screen with a picture fed as its preview, the scan-area
// screen, and the form filled from a scan.
TestCase {
    id: test
    name: "ScanPages"
    when: windowShown
    property var window

    function initTestCase() {
        const component = Qt.createComponent("qrc:/qml/Main.qml")
        compare(component.status, Component.Ready, component.errorString())
        window = component.createObject(null, { appDelegate: testApp })
        verify(window)
        window.requestActivate()
        waitForRendering(window.contentItem)
        window.openPage("NewBook")
        arrive("Add Book")
    }
    function cleanupTestCase() { window.destroy() }

    function page() { return window.pageStack.currentItem }
    function arrive(title) {
        tryVerify(() => page() && page().title === title, 6000, "on " + title)
        wait(400)
    }
    function tapScan() {
        const flick = findChild(page(), "formFlickable")
        flick.contentY = flick.contentHeight - flick.height
        wait(100)
        mouseClick(findChild(page(), "BarcodeButton"))
        flick.contentY = 0
    }
    function closeAlert() {
        const alert = findChild(page(), "alert")
        tryCompare(alert, "opened", true)
        const texts = [alert.title, alert.message]
        mouseClick(findChild(alert.footer, "alertButton_OK"))
        tryCompare(alert, "visible", false)
        return texts
    }
    // Back on the form once the screen stops waiting for the held-back answer.
    function backWithoutAnswer(isbn) {
        arrive("Add Book")
        compare(closeAlert(), ["Book Not Found", "The Scanned Barcode returned no Results for: " + isbn])
        compare(findChild(page(), "ISBNTextField").text, isbn)
        Frames.holdAnswers(false)
    }

    function test_1_photoPathShowsTheValue() {
        tapScan()
        arrive("Scan a Photo")
        mouseClick(findChild(page(), "StartScanning")) // no clipboard picture: a file, then
        tryCompare(page().pictureDialog, "visible", true)
        page().pictureDialog.reject()
        tryCompare(page().pictureDialog, "visible", false)

        Frames.holdAnswers(true)
        page().controller.pictureChosen(Frames.picture("frame-rotated.png"))
        tryCompare(findChild(page(), "DisplayLabel"), "text", "9780060853983")
        wait(300)
        shots.save(window, "scan-photo-displaylabel")
        backWithoutAnswer("9780060853983")
    }

    function test_2_cameraScreenMarksTheCode() {
        window.openPage("NewCapture")
        arrive("Scan Barcode")
        const screen = page().controller
        Frames.holdAnswers(true)
        verify(Frames.show(screen, "frame-portrait.png"))
        tryCompare(screen, "overlayVisible", true)
        const overlay = findChild(page(), "overlayView")
        verify(overlay.visible)
        compare(overlay.width, screen.overlayView.width)
        wait(300)
        shots.save(window, "scan-camera-overlay")
        backWithoutAnswer("9780060853983")
    }

    function test_3_scanAreaScreen() {
        window.openPage("Capture")
        arrive("Scan Area")
        tryCompare(findChild(page(), "alert"), "opened", true)
        wait(300)
        shots.save(window, "scan-area-no-camera")
        compare(closeAlert(), ["Scanning not supported",
                               "Your device does not support scanning a code from an item. Please use a device with a camera."])
        const area = findChild(page(), "barcodeAreaView")
        verify(area.width > 0 && area.height > 0)
        verify(Frames.show(page().controller, "frame-corner.png")) // the code lies outside the area
        wait(500)
        shots.save(window, "scan-area")
        compare(page().title, "Scan Area")
        mouseClick(findChild(window.header, "backButton"))
        arrive("Add Book")
    }

    function test_4_formFilledAfterAScan() {
        tapScan()
        arrive("Scan a Photo")
        page().controller.pictureChosen(Frames.picture("ean13-addon.png"))
        arrive("Add Book")
        tryCompare(page().controller, "bookNameTextField", "Good Omens")
        compare(findChild(page(), "ISBNTextField").text, "9780060853983")
        compare(findChild(page(), "bookAuthorTextField").text, "Neil Gaiman, Terry Pratchett")
        tryCompare(page().controller, "hasImage", true)
        wait(300)
        shots.save(window, "scan-form-filled")
    }

    function test_5_liveCamera() {
        if (!Frames.cameraPresent())
            skip("No camera on this machine: the live capture session is not started")
        window.openPage("NewCapture")
        arrive("Scan Barcode")
        tryCompare(page().controller, "running", true, 5000)
        mouseClick(findChild(window.header, "backButton"))
        arrive("Add Book")
    }
}
