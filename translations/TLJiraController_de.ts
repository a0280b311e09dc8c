<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>JABodyViewController</name>
    <message>
        <source>Attach a file</source>
        <translation>Datei anhängen</translation>
    </message>
    <message>
        <source>Attached files</source>
        <translation>Angehängte Dateien</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Issue &amp;key</source>
        <translation>&amp;Vorgangsschlüssel</translation>
    </message>
    <message>
        <source>Issue key for the file</source>
        <translation>Vorgangsschlüssel für die Datei</translation>
    </message>
    <message>
        <source>This window does not send files</source>
        <translation>Dieses Fenster sendet keine Dateien</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Auswählen&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Choose…</source>
        <translation>Aus&amp;wählen&#xa0;…</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Hochladen</translation>
    </message>
    <message>
        <source>&amp;Upload</source>
        <translation>&amp;Hochladen</translation>
    </message>
    <message>
        <source>Uploading</source>
        <translation>Datei wird hochgeladen</translation>
    </message>
    <message>
        <source>Uploading…</source>
        <translation>Datei wird hochgeladen&#xa0;…</translation>
    </message>
    <message>
        <source>I&amp;ssue key</source>
        <translation>Vorgangs&amp;schlüssel</translation>
    </message>
    <message>
        <source>Issue key to list files of</source>
        <translation>Vorgangsschlüssel für die Dateiliste</translation>
    </message>
    <message>
        <source>Show files</source>
        <translation>Dateien anzeigen</translation>
    </message>
    <message>
        <source>Show &amp;files</source>
        <translation>&amp;Dateien anzeigen</translation>
    </message>
    <message>
        <source>Receiving the list of files…</source>
        <translation>Dateiliste wird abgerufen&#xa0;…</translation>
    </message>
    <message>
        <source>The list opens when the issue is found</source>
        <translation>Die Liste öffnet sich, wenn der Vorgang gefunden ist</translation>
    </message>
</context>
<context>
    <name>JADownloadBodyViewController</name>
    <message>
        <source>Open from Jira</source>
        <translation>Aus Jira öffnen</translation>
    </message>
    <message>
        <source>Open a document from Jira</source>
        <translation>Dokument aus Jira öffnen</translation>
    </message>
    <message>
        <source>Issue &amp;key</source>
        <translation>&amp;Vorgangsschlüssel</translation>
    </message>
    <message>
        <source>Issue key</source>
        <translation>Vorgangsschlüssel</translation>
    </message>
    <message>
        <source>Not logged in</source>
        <translation>Nicht angemeldet</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Show Documents</source>
        <translation>Dokumente anzeigen</translation>
    </message>
    <message>
        <source>Show &amp;Documents</source>
        <translation>&amp;Dokumente anzeigen</translation>
    </message>
    <message>
        <source>The key stands in the issue's address, for example ABC-123</source>
        <translation>Der Schlüssel steht in der Adresse des Vorgangs, zum Beispiel ABC-123</translation>
    </message>
    <message>
        <source>Looking for the issue… The list opens when it is found.</source>
        <translation>Der Vorgang wird gesucht&#xa0;… Die Liste öffnet sich, wenn er gefunden ist.</translation>
    </message>
</context>
<context>
    <name>JAHeadViewController</name>
    <message>
        <source>Waiting for a session</source>
        <translation>Warten auf die Anmeldung</translation>
    </message>
    <message>
        <source>Not logged in yet</source>
        <translation>Noch nicht angemeldet</translation>
    </message>
    <message>
        <source>Log In…</source>
        <translation>Anmelden&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Log In…</source>
        <translation>&amp;Anmelden&#xa0;…</translation>
    </message>
    <message>
        <source>Avatar</source>
        <translation>Profilbild</translation>
    </message>
    <message>
        <source>Asking who you are…</source>
        <translation>Ihr Name wird abgefragt&#xa0;…</translation>
    </message>
    <message>
        <source>Log Out</source>
        <translation>Abmelden</translation>
    </message>
    <message>
        <source>Log &amp;Out</source>
        <translation>A&amp;bmelden</translation>
    </message>
</context>
<context>
    <name>JAListAttachedFilesWindow</name>
    <message>
        <source>Attached files</source>
        <translation>Angehängte Dateien</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>This issue has no files to download.</source>
        <translation>Dieser Vorgang hat keine Dateien zum Herunterladen.</translation>
    </message>
    <message>
        <source>Download progress</source>
        <translation>Fortschritt beim Herunterladen</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Download %1</source>
        <translation>%1 herunterladen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>Download läuft</translation>
    </message>
    <message>
        <source>Downloaded</source>
        <translation>Heruntergeladen</translation>
    </message>
    <message>
        <source>Not downloaded</source>
        <translation>Nicht heruntergeladen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Documents of %1</source>
        <translation>Dokumente zu %1</translation>
    </message>
    <message>
        <source>%1 has no documents of this program</source>
        <translation>%1 hat keine Dokumente dieses Programms</translation>
    </message>
    <message>
        <source>Attachments of %1</source>
        <translation>Anhänge zu %1</translation>
    </message>
    <message>
        <source>%1 has no attachments</source>
        <translation>%1 hat keine Anhänge</translation>
    </message>
    <message>
        <source>Waiting for the server…</source>
        <translation>Warten auf den Server&#xa0;…</translation>
    </message>
</context>
<context>
    <name>JALoginWindow</name>
    <message>
        <source>Log in to Jira</source>
        <translation>Bei Jira anmelden</translation>
    </message>
    <message>
        <source>&amp;Server address</source>
        <translation>&amp;Serveradresse</translation>
    </message>
    <message>
        <source>Server address</source>
        <translation>Serveradresse</translation>
    </message>
    <message>
        <source>Of the address, scheme and host count</source>
        <translation>Von der Adresse zählen Schema und Rechnername</translation>
    </message>
    <message>
        <source>&amp;User name or e-mail</source>
        <translation>&amp;Benutzername oder E-Mail-Adresse</translation>
    </message>
    <message>
        <source>User name or e-mail</source>
        <translation>Benutzername oder E-Mail-Adresse</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Passwort</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Logging in</source>
        <translation>Anmeldung läuft</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Log In</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Jira Cloud: from id.atlassian.com, with your e-mail address
Other Jira: from your profile there, without a user name</source>
        <translation>Jira Cloud: von id.atlassian.com, mit Ihrer E-Mail-Adresse
Anderes Jira: aus Ihrem Profil dort, ohne Benutzernamen</translation>
    </message>
    <message>
        <source>With port and path, if it has them</source>
        <translation>Mit Port und Pfad, wenn sie dazugehören</translation>
    </message>
    <message>
        <source>API &amp;token</source>
        <translation>API-&amp;Token</translation>
    </message>
    <message>
        <source>API token</source>
        <translation>API-Token</translation>
    </message>
</context>
<context>
    <name>JAUploadBodyViewController</name>
    <message>
        <source>Upload to Jira</source>
        <translation>Zu Jira hochladen</translation>
    </message>
    <message>
        <source>Attach to a Jira issue</source>
        <translation>An einen Jira-Vorgang anhängen</translation>
    </message>
    <message>
        <source>&amp;Issue key</source>
        <translation>&amp;Vorgangsschlüssel</translation>
    </message>
    <message>
        <source>Issue key</source>
        <translation>Vorgangsschlüssel</translation>
    </message>
    <message>
        <source>The key stands in the issue's address, for example ABC-123</source>
        <translation>Der Schlüssel steht in der Adresse des Vorgangs, zum Beispiel ABC-123</translation>
    </message>
    <message>
        <source>Upload progress</source>
        <translation>Fortschritt beim Hochladen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Upload</source>
        <translation>Hochladen</translation>
    </message>
    <message>
        <source>Choose a file to attach</source>
        <translation>Datei zum Anhängen auswählen</translation>
    </message>
    <message>
        <source>Choose a copy that lies in a folder of its own: the folder is removed after the upload.</source>
        <translation>Wählen Sie eine Kopie, die allein in einem eigenen Ordner liegt: Der Ordner wird nach dem Hochladen gelöscht.</translation>
    </message>
    <message>
        <source>Open File…</source>
        <translation>Datei öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Open &amp;File…</source>
        <translation>&amp;Datei öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>The document is gone. Close this window and attach the document again.</source>
        <translation>Das Dokument ist nicht mehr da. Schließen Sie dieses Fenster und hängen Sie das Dokument erneut an.</translation>
    </message>
    <message>
        <source>Attached to %1</source>
        <translation>An %1 angehängt</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>JAUploadingWindow</name>
    <message>
        <source>Upload to Jira</source>
        <translation>Zu Jira hochladen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Uploading</source>
        <translation>Wird hochgeladen</translation>
    </message>
    <message>
        <source>Upload progress</source>
        <translation>Fortschritt beim Hochladen</translation>
    </message>
    <message>
        <source>Error message</source>
        <translation>Fehlermeldung</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>The document is attached to the issue.</source>
        <translation>Das Dokument ist an den Vorgang angehängt.</translation>
    </message>
    <message>
        <source>Uploaded</source>
        <translation>Hochgeladen</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 an %2</translation>
    </message>
    <message>
        <source>Waiting for the server…</source>
        <translation>Warten auf den Server&#xa0;…</translation>
    </message>
    <message>
        <source>Attached to %1</source>
        <translation>An %1 angehängt</translation>
    </message>
    <message>
        <source>The server says: “%1”</source>
        <translation>Der Server meldet: „%1“</translation>
    </message>
    <message>
        <source>%1 says: “%2”</source>
        <translation>%1 meldet: „%2“</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Log out and in again, then attach the document again.</source>
        <translation>Melden Sie sich ab und wieder an, und hängen Sie das Dokument dann erneut an.</translation>
    </message>
    <message>
        <source>Ask whoever runs the server for the right to attach files to this issue.</source>
        <translation>Bitten Sie den Betreiber des Servers um das Recht, an diesen Vorgang Dateien anzuhängen.</translation>
    </message>
    <message>
        <source>Attach the document again, and check the issue key.</source>
        <translation>Hängen Sie das Dokument erneut an, und prüfen Sie den Vorgangsschlüssel.</translation>
    </message>
    <message>
        <source>The server does not take a document of this size.</source>
        <translation>Der Server nimmt kein Dokument dieser Größe an.</translation>
    </message>
    <message>
        <source>Check the connection, then attach the document again.</source>
        <translation>Prüfen Sie die Verbindung, und hängen Sie das Dokument dann erneut an.</translation>
    </message>
    <message>
        <source>Attach the document again, now or later.</source>
        <translation>Hängen Sie das Dokument jetzt oder später erneut an.</translation>
    </message>
    <message>
        <source>Log out and in again, then press Upload again.</source>
        <translation>Melden Sie sich ab und wieder an und drücken Sie dann noch einmal auf Hochladen.</translation>
    </message>
    <message>
        <source>Check the issue key, then press Upload again.</source>
        <translation>Prüfen Sie den Vorgangsschlüssel und drücken Sie dann noch einmal auf Hochladen.</translation>
    </message>
    <message>
        <source>Check the connection, then press Upload again.</source>
        <translation>Prüfen Sie die Verbindung und drücken Sie dann noch einmal auf Hochladen.</translation>
    </message>
    <message>
        <source>Nothing was sent. Press Upload to try again.</source>
        <translation>Es wurde nichts gesendet. Drücken Sie auf Hochladen, um es noch einmal zu versuchen.</translation>
    </message>
    <message>
        <source>Give the document another name, then attach it again.</source>
        <translation>Geben Sie dem Dokument einen anderen Namen, und hängen Sie es dann erneut an.</translation>
    </message>
    <message>
        <source>Press Upload again, now or later.</source>
        <translation>Drücken Sie jetzt oder später noch einmal auf Hochladen.</translation>
    </message>
</context>
<context>
    <name>JMWindowController</name>
    <message>
        <source>Looking for your session…</source>
        <translation>Ihre Sitzung wird gesucht&#xa0;…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Looking for your session on %1…</source>
        <translation>Ihre Sitzung auf %1 wird gesucht&#xa0;…</translation>
    </message>
</context>
<context>
    <name>Keyring</name>
    <message>
        <source>This program was built without support for the desktop’s keyring.</source>
        <translation>Dieses Programm wurde ohne Unterstützung für den Schlüsselbund des Desktops gebaut.</translation>
    </message>
    <message>
        <source>The desktop’s keyring cannot be used with the event loop of this program.</source>
        <translation>Der Schlüsselbund des Desktops ist mit der Ereignisschleife dieses Programms nicht zu verwenden.</translation>
    </message>
    <message>
        <source>The desktop’s keyring cannot be reached. Is one running?</source>
        <translation>Der Schlüsselbund des Desktops ist nicht erreichbar. Läuft einer?</translation>
    </message>
    <message>
        <source>The desktop’s keyring is locked. Unlock it and try again.</source>
        <translation>Der Schlüsselbund des Desktops ist gesperrt. Entsperren Sie ihn und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>The desktop’s keyring is locked, or your login is no longer in it.</source>
        <translation>Der Schlüsselbund des Desktops ist gesperrt, oder Ihre Anmeldung ist nicht mehr darin.</translation>
    </message>
    <message>
        <source>Your login is still in the desktop’s keyring. Is that running and unlocked?</source>
        <translation>Ihre Anmeldung ist noch im Schlüsselbund des Desktops. Läuft er, und ist er entsperrt?</translation>
    </message>
    <message>
        <source>The part of this program that reaches the desktop’s keyring is missing or cannot be loaded.</source>
        <translation>Der Teil dieses Programms, der den Schlüsselbund des Desktops erreicht, fehlt oder ist nicht zu laden.</translation>
    </message>
</context>
<context>
    <name>TLJiraJobs</name>
    <message>
        <source>“%1” cannot be an attachment’s name.</source>
        <translation>„%1“ kann kein Name eines Anhangs sein.</translation>
    </message>
    <message>
        <source>The document could not be copied: %1</source>
        <translation>Das Dokument konnte nicht kopiert werden: %1</translation>
    </message>
    <message>
        <source>The program could not write it.</source>
        <translation>Das Programm konnte es nicht schreiben.</translation>
    </message>
    <message>
        <source>The server sent something else than the document: %1 bytes instead of %2.</source>
        <translation>Der Server hat etwas anderes als das Dokument gesendet: %1 Byte statt %2.</translation>
    </message>
    <message>
        <source>The document could not be put in its place: %1</source>
        <translation>Das Dokument konnte nicht an seinen Platz gelegt werden: %1</translation>
    </message>
</context>
<context>
    <name>TokenSignIn</name>
    <message>
        <source>This address leads on to another one, and the token was not sent there. Type the server’s own address.</source>
        <translation>Diese Adresse führt zu einer anderen weiter, und das Token ging nicht dorthin. Geben Sie die eigene Adresse des Servers ein.</translation>
    </message>
    <message>
        <source>What answers at this address is not Jira.</source>
        <translation>Was unter dieser Adresse antwortet, ist nicht Jira.</translation>
    </message>
    <message>
        <source>The server does not accept this token.</source>
        <translation>Der Server nimmt dieses Token nicht an.</translation>
    </message>
    <message>
        <source>The server denies access with this token.</source>
        <translation>Der Server verweigert den Zugang mit diesem Token.</translation>
    </message>
    <message>
        <source>The server denies access with this token alone. Jira Cloud wants your e-mail address with it.</source>
        <translation>Der Server verweigert den Zugang mit diesem Token allein. Jira Cloud will Ihre E-Mail-Adresse dazu.</translation>
    </message>
    <message>
        <source>No token was given.</source>
        <translation>Es wurde kein Token angegeben.</translation>
    </message>
    <message>
        <source>This is no token: it has blanks, line breaks or other characters that no token has.</source>
        <translation>Das ist kein Token: Es enthält Leerzeichen, Zeilenumbrüche oder andere Zeichen, die kein Token hat.</translation>
    </message>
    <message>
        <source>A user name with a colon or a line break cannot be used with a token.</source>
        <translation>Ein Benutzername mit einem Doppelpunkt oder Zeilenumbruch lässt sich nicht mit einem Token verwenden.</translation>
    </message>
    <message>
        <source>No token is saved for this server.</source>
        <translation>Für diesen Server ist kein Token gespeichert.</translation>
    </message>
</context>
<context>
    <name>TransferRate</name>
    <message>
        <source>%1 KB/s</source>
        <translation>%1 KB/s</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1 MB/s</translation>
    </message>
    <message>
        <source>about %1 h left</source>
        <translation>noch etwa %1 h</translation>
    </message>
    <message>
        <source>about %1 min left</source>
        <translation>noch etwa %1 min</translation>
    </message>
    <message>
        <source>about %1 s left</source>
        <translation>noch etwa %1 s</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>noch %1 s</translation>
    </message>
</context>
</TS>
