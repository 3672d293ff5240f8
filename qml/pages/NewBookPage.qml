import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise
import "../components"

ScreenPage {
    id: page
    title: ctl.title
    property alias controller: ctl
    unwindTargets: ["unwindFromScanner"]
    onUnwound: name => ctl.unwindFromScanner()

    NewBookViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
        onUnwind: name => page.unwind(name)
    }
    Component.onCompleted: ctl.viewDidLoad()
    StackView.onActivating: ctl.viewWillAppear()

    barActions: Component {
        ToolButton {
            objectName: "saveButton"
            text: "Save"
            font.bold: true
            Material.foreground: "white"
            onClicked: ctl.SaveNewBook()
        }
    }

    BookFormFields {
        anchors.fill: parent
        form: ctl
        canScan: true
    }

    AlertHost { controller: ctl }
}
