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

    DetailViewController {
        id: ctl
        appDelegate: page.appDelegate
        onNavigate: target => page.openPage(target)
        onUnwind: name => page.unwind(name)
        onBack: page.ApplicationWindow.window.back()
        onNotice: text => page.showNotice(text)
    }
    Component.onCompleted: ctl.viewDidLoad()
    StackView.onActivating: ctl.viewWillAppear()

    // The back arrow asks the screen: edits not saved are confirmed first,
    // then it says where it returns to.
    function goBack() {
        ctl.leaveScreen()
    }

    Shortcut {
        sequences: [StandardKey.Save]
        enabled: page.StackView.status === StackView.Active
        onActivated: ctl.UpdateBook()
    }

    barActions: Component {
        RowLayout {
            spacing: 0
            ToolButton {
                objectName: "shareButton"
                contentItem: Icon { name: "share"; color: "white" }
                onClicked: ctl.ShareButtonTapped()
                Accessible.name: "Share"
            }
            ToolButton {
                objectName: "saveButton"
                text: "Save"
                font.bold: true
                Material.foreground: "white"
                onClicked: ctl.UpdateBook()
            }
        }
    }

    BookFormFields {
        anchors.fill: parent
        form: ctl
        coverExtras: Component {
            Item {
                DragHandler {
                    target: null
                    property point last
                    onActiveChanged: last = Qt.point(0, 0)
                    onTranslationChanged: {
                        ctl.pannedView(translation.x - last.x, translation.y - last.y)
                        last = Qt.point(translation.x, translation.y)
                    }
                }
                TapHandler {
                    onDoubleTapped: ctl.coverDoubleTapped()
                }
                ToolButton {
                    objectName: "zoomButton"
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    contentItem: Icon { name: ctl.zoomed ? "zoom_out" : "zoom_in"; color: Theme.primary }
                    onClicked: ctl.ZoomButtonTapped()
                    Accessible.name: "Zoom"
                }
            }
        }
    }

    AlertHost { controller: ctl }
    ShareSheet { platform: page.appDelegate.platform }
}
