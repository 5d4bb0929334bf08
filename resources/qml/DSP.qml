// What the live areas of the block diagram do: a click opens the block's editor. The editor window is
// published to this scene as the context property tarnkbx_backend.
import QtQuick 2.4
import TarnKBXBackEnd 1.0

DSPForm {
    width: 800
    height: 425
    anchors.centerIn: parent

    // Whether the windows are light; the picture lets their colour through.
    property bool light: false

    // A dense screen gets the larger picture by its name's "@2x"; a view stretched this far needs it as well.
    picture.source: light
                    ? (width > 1000 ? "images/TarnKBX_DSP_Block_View_no_Meters_light@2x.png"
                                    : "images/TarnKBX_DSP_Block_View_no_Meters_light.png")
                    : (width > 1000 ? "images/TarnKBX_DSP_Block_View_no_Meters@2x.png"
                                    : "images/TarnKBX_DSP_Block_View_no_Meters.png")

    // The block that the arrow keys have come to; null while the keyboard is elsewhere.
    property Item chosen: null

    Rectangle {
        visible: parent.chosen !== null
        x: visible ? parent.chosen.x : 0
        y: visible ? parent.chosen.y : 0
        width: visible ? parent.chosen.width : 0
        height: visible ? parent.chosen.height : 0
        color: "transparent"
        border.width: 2
        border.color: parent.light ? "#ff0a5cc0" : "#ff7cc4ff"
    }

    Behavior on btInGain.color {
        ColorAnimation {
        }
    }
    Behavior on netRxGain.color {
        ColorAnimation {
        }
    }
    Behavior on usbInGain.color {
        ColorAnimation {
        }
    }
    Behavior on matrixMixer.color {
        ColorAnimation {
        }
    }
    Behavior on btOutGain.color {
        ColorAnimation {
        }
    }
    Behavior on netTxGain.color {
        ColorAnimation {
        }
    }
    Behavior on usbOutGain.color {
        ColorAnimation {
        }
    }

    btInGainMouse.onClicked: tarnkbx_backend.onBtInGainClicked()
    netRxGainMouse.onClicked: tarnkbx_backend.onNetRxGainClicked()
    usbInGainMouse.onClicked: tarnkbx_backend.onUsbInGainClicked()
    matrixMixerMouse.onClicked: tarnkbx_backend.onMatrixMixerClicked()
    btOutGainMouse.onClicked: tarnkbx_backend.onBtOutGainClicked()
    netTxGainMouse.onClicked: tarnkbx_backend.onNetTxGainClicked()
    usbOutGainMouse.onClicked: tarnkbx_backend.onUsbOutGainClicked()
}
