import QtQuick

Window {
    id: window

    property int job: 0
    property string document

    signal said(string line)
    signal arrived(string path)

    width: 240
    height: 120
    visible: true
    title: "A host in QML"

    Rectangle {
        id: button
        objectName: "attachButton"
        anchors.centerIn: parent
        width: label.implicitWidth + 24
        height: label.implicitHeight + 16
        color: tap.pressed ? "lightsteelblue" : "gainsboro"

        Text {
            id: label
            anchors.centerIn: parent
            text: "Attach to issue…"
        }
        TapHandler {
            id: tap
            onTapped: {
                window.job = jira.attachFile("plan.tessaloom", window.document, window, { closeWhenDone: true });
                window.said("attaching: " + (window.job > 0 ? "a job of its own" : "no job"));
            }
        }
    }

    Connections {
        target: jira

        function onEnded(job, result) {
            if (job !== window.job) {
                window.said("the end of another job: " + result.error);
            } else if (result.path === "") {
                window.said([result.outcome, result.attachmentName, result.issueKey, result.size].join(" "));
                jira.attachBytes("plan.tessaloom", new ArrayBuffer(4), window, { colour: "blue" });
                window.job = jira.fetchDocument(button, { closeWhenDone: true });
                window.said("asking again: " + jira.fetchDocument(window, {}));
            } else {
                window.arrived(result.path);
            }
        }
    }
}
