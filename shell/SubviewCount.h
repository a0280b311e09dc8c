#pragma once

#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/ViewController.h"

/// Leaves the number of a view's subviews as its controller's represented object, where hosts look for it.
inline void noteSubviewCount(tljira::ViewController& controller)
{
    controller.setRepresentedObject(QVariant::fromValue<qint64>(tljira::subviews(controller.view()).size()));
}
