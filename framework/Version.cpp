#include "framework/Version.h"

const double TLJiraControllerVersionNumber = 1.0;

const unsigned char TLJiraControllerVersionString[] = "@(#)PROGRAM:TLJiraController  PROJECT:TLJiraController-1\n";
