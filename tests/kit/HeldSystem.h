#pragma once

#include <QString>

#include <string>

struct addrinfo;

namespace tests {

/// What a system does that hangs: this program's look-ups and reads pass by here, and some of them wait until they are
/// let go. So that a program which waits for them fails instead of standing still, they are let go after half a minute
/// at the latest; that is told on standard error.
class HeldLookUp
{
public:
    /// The name server does not answer for this host.
    explicit HeldLookUp(const std::string& host);
    ~HeldLookUp();
    HeldLookUp(const HeldLookUp&) = delete;
    HeldLookUp& operator=(const HeldLookUp&) = delete;

    /// How many wait for it at this moment.
    static int waiting();
};

/// See HeldLookUp.
class HeldFile
{
public:
    /// The disk does not give the bytes of this file from this one on.
    HeldFile(const QString& path, qint64 from);
    ~HeldFile();
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;

    static int waiting();
    /// The disk gives them again.
    static void release();
};

/// A file that the system does not hold in memory from this byte on: its disk gives it at once, but has to be asked.
class ColdFile
{
public:
    ColdFile(const QString& path, qint64 from);
    ~ColdFile();
    ColdFile(const ColdFile&) = delete;
    ColdFile& operator=(const ColdFile&) = delete;
};

/// See HeldLookUp.
class HeldDownloads
{
public:
    /// The disk takes the next piece of a file that is called as downloads under way are only when it is let go.
    HeldDownloads();
    ~HeldDownloads();
    HeldDownloads(const HeldDownloads&) = delete;
    HeldDownloads& operator=(const HeldDownloads&) = delete;

    static int waiting();
    static void release();
    /// Bytes that it took since then.
    static qint64 takenSinceRelease();
};

} // namespace tests
