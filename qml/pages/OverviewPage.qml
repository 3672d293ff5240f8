import QtQuick
import QtQuick.Controls
import QtQuick.Pdf
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title

    OverviewViewController {
        id: ctl
        appDelegate: page.appDelegate
    }
    Component.onCompleted: ctl.viewDidLoad()

    // The guide is scaled to the width of the screen whenever either is ready or changes.
    function fitWidth() {
        Qt.callLater(() => {
            if (doc.status === PdfDocument.Ready && view.width > 0)
                view.scaleToWidth(view.width, view.height)
        })
    }

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
    }
}
