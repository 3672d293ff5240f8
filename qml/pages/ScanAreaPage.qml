import QtQuick
import QtQuick.Controls
import Tomewise
import "../components"

// The camera screen with a marked scan area: only a code inside the area is
// read. Without a camera it says that scanning is not supported.
ScreenPage {
    id: page
    readonly property alias controller: ctl
    title: ctl.title
    background: Rectangle { color: "black" }

    CaptureViewController {
        id: ctl
        appDelegate: page.appDelegate
        onUnwind: name => page.unwind(name)
    }

    CameraPreview {
        id: camera
        anchors.fill: parent
        controller: ctl
        hint: "Hold the barcode inside the frame"
    }

    // Everything outside the area is dimmed.
    Repeater {
        model: [
            Qt.rect(0, 0, page.width, ctl.barcodeArea.y),
            Qt.rect(0, ctl.barcodeArea.y + ctl.barcodeArea.height, page.width,
                    page.height - ctl.barcodeArea.y - ctl.barcodeArea.height),
            Qt.rect(0, ctl.barcodeArea.y, ctl.barcodeArea.x, ctl.barcodeArea.height),
            Qt.rect(ctl.barcodeArea.x + ctl.barcodeArea.width, ctl.barcodeArea.y,
                    page.width - ctl.barcodeArea.x - ctl.barcodeArea.width, ctl.barcodeArea.height)
        ]
        Rectangle {
            required property rect modelData
            x: modelData.x; y: modelData.y; width: modelData.width; height: modelData.height
            color: "#80000000"
        }
    }
    Rectangle {
        objectName: "barcodeAreaView"
        x: ctl.barcodeArea.x
        y: ctl.barcodeArea.y
        width: ctl.barcodeArea.width
        height: ctl.barcodeArea.height
        color: "transparent"
        border.width: 1
        border.color: "#a0ffffff"
        Brackets {
            objectName: "bracket"
            anchors.fill: parent
            anchors.margins: -4
            color: "white"
            length: 28
            lineWidth: 4
        }
    }

    Component.onCompleted: camera.start()
    StackView.onActivating: if (camera.loaded) ctl.viewWillAppear()
    StackView.onDeactivating: ctl.viewWillDisappear()

    AlertHost { controller: ctl }
}
