import QtQuick
import QtQuick.Controls
import QtQuick.Pdf
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title
    maxContentWidth: 0

    OverviewViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    // The guide is scaled to the width of the screen whenever either is ready or changes.
    function fitWidth() {
        Qt.callLater(() => {
            if (doc.status === PdfDocument.Ready && view.width > 0) {
                // The view keeps room for its scroll bar beside the page.
                view.scaleToWidth(view.width - 16, view.height)
                page.fitScale = view.renderScale
            }
        })
    }
    property real fitScale: 1
    // Zoom by a factor, kept between half and four times the fitted width.
    function zoom(factor) {
        view.renderScale = Math.max(page.fitScale / 2, Math.min(page.fitScale * 4, view.renderScale * factor))
    }

    Shortcut { sequences: [StandardKey.ZoomIn, "Ctrl+="]; onActivated: page.zoom(1.25) }
    Shortcut { sequence: StandardKey.ZoomOut; onActivated: page.zoom(0.8) }
    Shortcut { sequence: "Ctrl+0"; onActivated: page.fitWidth() }

    Rectangle {
        objectName: "TextView"
        anchors.fill: parent
        anchors.margins: 6
        radius: 5
        border.width: 1
        border.color: "black"
        color: "white"
        clip: true

        PdfMultiPageView {
            id: view
            objectName: "pdfView"
            anchors.fill: parent
            anchors.margins: 1
            document: PdfDocument {
                id: doc
                source: ctl.documentUrl
                onStatusChanged: page.fitWidth()
            }
            onWidthChanged: page.fitWidth()
        }
        // Ctrl+wheel zooms, as in a browser; a plain wheel still scrolls the pages.
        MouseArea {
            anchors.fill: view
            acceptedButtons: Qt.NoButton
            onWheel: wheel => {
                if (!(wheel.modifiers & Qt.ControlModifier)) {
                    wheel.accepted = false
                    return
                }
                page.zoom(Math.pow(1.0015, wheel.angleDelta.y))
            }
        }
    }
}
