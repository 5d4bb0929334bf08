// The block diagram and its seven live areas. An area's place is a fraction of the picture's size, so the
// areas stay on their blocks at any size of the view. A view that takes its first size from the scene has
// none yet when the scene is put into it: until then the scene keeps its own, 800 x 425, and fills it after.
import QtQuick 2.4

Item {
    width: 800
    height: 425
    anchors.fill: parent && parent.width > 0 ? parent : undefined
    anchors.centerIn: parent

    property alias picture: image
    property alias btInGain: rectangle_bt_in_gain
    property alias netRxGain: rectangle_netrx_gain
    property alias usbInGain: rectangle_usb_in_gain
    property alias matrixMixer: rectangle_matrix_mixer
    property alias btOutGain: rectangle_bt_out_gain
    property alias netTxGain: rectangle_nettx_gain
    property alias usbOutGain: rectangle_usb_out_gain
    property alias btInGainMouse: mouseArea_bt_in_gain
    property alias netRxGainMouse: mouseArea_netrx_gain
    property alias usbInGainMouse: mouseArea_usb_in_gain
    property alias matrixMixerMouse: mouseArea_matrix_mixer
    property alias btOutGainMouse: mouseArea_bt_out_gain
    property alias netTxGainMouse: mouseArea_nettx_gain
    property alias usbOutGainMouse: mouseArea_usb_out_gain

    Image {
        id: image
        width: 800
        height: 425
        anchors.fill: parent
        anchors.leftMargin: 0
        anchors.topMargin: 0
        anchors.rightMargin: 0
        anchors.bottomMargin: 0
        source: "images/TarnKBX_DSP_Block_View_no_Meters.png"

        Rectangle {
            id: rectangle_bt_in_gain
            x: image.width * 0.008
            y: image.height * 0.153
            width: image.width * 0.16
            height: image.height * 0.082
            color: "#00000000"
            border.width: mouseArea_bt_in_gain.containsMouse ? 4 : 0
            border.color: mouseArea_bt_in_gain.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_bt_in_gain
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }

        Rectangle {
            id: rectangle_netrx_gain
            x: image.width * 0.01
            y: image.height * 0.338
            width: image.width * 0.16
            height: image.height * 0.314
            color: "#00000000"
            border.width: mouseArea_netrx_gain.containsMouse ? 4 : 0
            border.color: mouseArea_netrx_gain.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_netrx_gain
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }

        Rectangle {
            id: rectangle_usb_in_gain
            x: image.width * 0.01
            y: image.height * 0.798
            width: image.width * 0.16
            height: image.height * 0.082
            color: "#00000000"
            border.width: mouseArea_usb_in_gain.containsMouse ? 4 : 0
            border.color: mouseArea_usb_in_gain.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_usb_in_gain
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }

        Rectangle {
            id: rectangle_matrix_mixer
            x: image.width * 0.428
            y: image.height * 0.124
            width: image.width * 0.08
            height: image.height * 0.75
            color: "#00000000"
            border.width: mouseArea_matrix_mixer.containsMouse ? 4 : 0
            border.color: mouseArea_matrix_mixer.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_matrix_mixer
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }

        Rectangle {
            id: rectangle_bt_out_gain
            x: image.width * 0.83
            y: image.height * 0.153
            width: image.width * 0.16
            height: image.height * 0.082
            color: "#00000000"
            border.width: mouseArea_bt_out_gain.containsMouse ? 4 : 0
            border.color: mouseArea_bt_out_gain.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_bt_out_gain
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }

        Rectangle {
            id: rectangle_nettx_gain
            x: image.width * 0.828
            y: image.height * 0.338
            width: image.width * 0.161
            height: image.height * 0.327
            color: "#00000000"
            border.width: mouseArea_nettx_gain.containsMouse ? 4 : 0
            border.color: mouseArea_nettx_gain.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_nettx_gain
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }

        Rectangle {
            id: rectangle_usb_out_gain
            x: image.width * 0.83
            y: image.height * 0.798
            width: image.width * 0.16
            height: image.height * 0.082
            color: "#00000000"
            border.width: mouseArea_usb_out_gain.containsMouse ? 4 : 0
            border.color: mouseArea_usb_out_gain.containsMouse ? "#ffff7707" : "#00ff7707"

            MouseArea {
                id: mouseArea_usb_out_gain
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
            }
        }
    }
}
