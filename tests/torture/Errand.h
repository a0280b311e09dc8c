#pragma once

#include "tests/torture/Place.h"
#include "tests/torture/Program.h"

namespace torture {

/// What a program is to do, and whether it has done it.
class Errand
{
public:
    enum class Kind {
        Login,
        Session,
        Upload,
        Attachments,
        Download,
        DownloadAcross,
        Logout,
        // In windows, by a host.
        Attach,
        Fetch
    };
    /// What stands on the disk and at the server after a run.
    enum class Effect {
        None,
        Whole,
        WholeWithoutCookies, ///< libcurl drops those for which it has no memory
        Part,                ///< a logout that has not forgotten everything, which is told
        PartialFile,         ///< under its final name, here or at the server
        Damage,              ///< to what is saved
    };
    struct Finding
    {
        Effect effect = Effect::None;
        QString detail = {};
    };

    /// Those of the tool, or those in windows.
    static const std::vector<Kind>& kinds(bool inWindows);
    static QString name(Kind kind);

    Errand(Kind kind, Place& place);

    Kind kind() const { return m_kind; }
    /// Brings everything to where it was before the errand.
    void prepare();
    Command command() const;
    Finding find() const;
    /// The file that a download leaves; empty for other errands.
    QString destination() const;

private:
    Finding findLogin() const;
    Finding findUpload() const;
    Finding findDownload() const;
    Finding findFetched() const;
    Finding findLogout() const;
    /// Of an errand that changes neither settings nor cookies.
    Finding findNoChange() const;

    Kind m_kind;
    Place& m_place;
    QString m_session;
};

} // namespace torture
