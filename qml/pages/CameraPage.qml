import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import Tomewise
import "../components"

// The live camera screen ("BarCode", "NewCapture"): the preview fills the
// page and a code read goes to the form. Its bar leads to the scan-area
// screen and to scanning a photo.
ScreenPage {
    id: page
    readonly property CaptureSessionController controller: makeController()

    function makeController() {
        const screen = page.pageTarget === "BarCode" ? barCode : newCapture
        return screen.createObject(page, { appDelegate: page.appDelegate })
    }
    Component { id: barCode; BarCodeViewController {} }
    Component { id: newCapture; NewCaptureViewController {} }

    title: controller.title
    background: Rectangle { color: "black" }

    Connections {
        target: page.controller
        function onUnwind(name) { page.unwind(name) }
        function onNavigate(target) { page.openPage(target) }
    }

    barActions: Component {
        Row {
            ToolButton {
                objectName: "scanAreaButton"
                text: "Area"
                Material.foreground: "white"
                onClicked: page.openPage("Capture")
            }
            ToolButton {
                objectName: "photoButton"
                text: "Photo"
                Material.foreground: "white"
                onClicked: page.openPage("CaptureIOS16")
            }
        }
    }

    CameraPreview {
        id: camera
        anchors.fill: parent
        controller: page.controller
    }

    Component.onCompleted: camera.start()
    StackView.onActivating: if (camera.loaded) page.controller.viewWillAppear()
    StackView.onDeactivating: page.controller.viewWillDisappear()

    AlertHost { controller: page.controller }
}
