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
                onStatusChanged: if (doc.status === PdfDocument.Ready) view.scaleToWidth(view.width, view.height)
            }
        }
    }
}
