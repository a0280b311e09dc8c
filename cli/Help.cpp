#include "cli/Help.h"

namespace cli {

QByteArray helpText()
{
    return R"(Usage: tljira [OPTION]... COMMAND

Attaches documents to Jira issues, lists what is attached and fetches it.

Commands:
  login SERVER [USER]        open a session at a server and save it
  session                    is the saved session still good?
  whoami                     whose session is it?
  attachments KEY            the issue's documents, newest first
  upload KEY FILE            attach a file to the issue
  download KEY NAME|ID       fetch an attachment; prints its path
  logout                     end the session and forget the server

Options:
  --password-stdin           login: read the password from standard input
  --token                    login: by USER's API token in place of a password
                             or, without USER, by a personal access token
  --token-stdin              login: the same, read from standard input
  --keyring                  login: save in the desktop's keyring, not in a file
  --all                      attachments: everything, in the server's order
  --documents EXTENSION      attachments: names with this extension in place of
                             tessaloom, or "all"; may be repeated
  --json                     session, whoami, attachments: print one JSON value
  --name NAME                upload: the attachment's name, if not the file's
  --to PATH                  download: a file to make, or a folder to put it in
  --connect-to HOST:PORT:ADDR:PORT
                             connect to ADDR:PORT for HOST:PORT; may be repeated
  --proxy URL                http://HOST:PORT, socks5://HOST:PORT or
                             socks5h://HOST:PORT; empty for none
  --cacert PATH              certificates of the authorities to trust, a file or
                             a folder, in place of the system's
  --user-agent TEXT          what requests say of the program
  --verbose                  show the log on standard error
  --version                  show the version
  -h, --help                 show this help

Exit status: 0 done, 1 failed, 2 wrong usage, 130 interrupted.
)";
}

QByteArray versionText()
{
    return "tljira " CLI_VERSION "\n";
}

} // namespace cli
