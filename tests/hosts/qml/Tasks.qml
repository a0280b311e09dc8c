import QtQuick

// A host with an interface of its own: it chooses options, does the jobs without windows, and says what came of them.
Window {
    id: window

    property string route
    property string document
    property var then: ({})
    property var moved: ({})
    property string lines

    signal said(string line)
    signal arrived(string path)

    width: 240
    height: 120
    visible: true
    title: "A host in QML"

    function after(job, work) {
        then[job] = work;
    }

    function begin() {
        said("refused: " + jira.setOptions({ log: "off", colour: "blue" }));
        said("refused: " + jira.setOptions({ address: "somewhere" }));
        said("chosen: " + (jira.setOptions({ log: "signal", routes: [route], userAgent: "Weaver/2.1", documents: ["odt", { extension: "tessaloom" }] }) === ""));
        after(jira.signIn("http://jira.example.test", "anna", "secret"), signedIn);
    }

    function signedIn(job, result) {
        said("signed in: " + result.outcome);
        said("too late: " + jira.setOptions({}));
        after(jira.askWhoIsSignedIn(), toldWho);
    }

    function toldWho(job, result) {
        said("who: " + result.userName + " " + result.displayName);
        after(jira.attachFileTo("ABC-1", "plan.tessaloom", document), attached);
    }

    function attached(job, result) {
        const isAll = moved[job][0] === moved[job][1] && moved[job][1] > result.size;
        said(["attached:", result.outcome, result.attachmentName, result.size, isAll].join(" "));
        const other = jira.attachBytesTo("ABC-1", "another.tessaloom", new ArrayBuffer(4));
        after(other, cancelled);
        said(["cancel:", jira.cancel(other), jira.cancel(other), jira.cancel(job)].join(" "));
    }

    function cancelled(job, result) {
        said("cancelled: " + result.outcome);
        after(jira.listDocuments("NO-1"), failed);
    }

    function failed(job, result) {
        said(["failed:", result.outcome, result.errorCode, result.documents.length].join(" "));
        after(jira.listDocuments("ABC-1"), listed);
    }

    function listed(job, result) {
        for (const one of result.documents)
            said(["listed:", one.attachmentName, one.size, !isNaN(one.date)].join(" "));
        after(jira.fetchAttachment("ABC-1", result.documents[0].attachmentId), fetched);
    }

    function fetched(job, result) {
        said("fetched: " + result.attachmentName + " " + (moved[job][0] === result.size && moved[job][1] === result.size));
        said(["log:", lines.includes("username = anna"), lines.includes("password = ***"), lines.includes("secret")].join(" "));
        arrived(result.path);
    }

    Timer {
        interval: 0
        running: true
        onTriggered: window.begin()
    }

    Connections {
        target: jira

        function onEnded(job, result) {
            const work = window.then[job];
            delete window.then[job];
            work(job, result);
        }
        function onProgress(job, bytes, ofBytes) {
            window.moved[job] = [bytes, ofBytes];
        }
        function onLogged(line) {
            window.lines += line + "\n";
        }
    }
}
