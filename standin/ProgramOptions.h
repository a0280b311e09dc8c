#pragma once

#include "standin/FaultSpec.h"
#include "standin/Options.h"
#include "standin/Records.h"

#include <QStringList>

#include <cstdint>
#include <string>
#include <vector>

namespace standin {

/// The command line of the stand-in program.
struct ProgramOptions
{
    struct File
    {
        std::string issueKey;
        std::string path;
    };
    struct Synthetic
    {
        std::string issueKey;
        std::string fileName;
        std::int64_t size;
    };

    Options server = {};
    std::vector<User> users = {};
    std::vector<std::string> issues = {};
    std::vector<File> files = {};
    std::vector<Synthetic> synthetics = {};
    std::vector<FaultSpec> faults = {};
    std::string certificateFile = {}; ///< where the certificate is written; empty: nowhere
    bool isVerbose = false;
    bool wantsHelp = false;
    std::string error = {}; ///< what cannot be understood; empty: nothing

    /// The first argument is the program's name. Without users there is demo with the password demo, without issues
    /// DEMO-1; an issue that a file is attached to need not be named besides.
    static ProgramOptions parse(const QStringList& arguments);
    static QString help();
};

} // namespace standin
