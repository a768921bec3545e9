#pragma once

#include "operations/FileOperations.h"
#include "util/DateText.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "util/SizeText.h"

// The operations object: joins the parts that answer questions and carry out requests, and adds no
// logic of its own.
class Twinleaf final : public SizeText,
                       public DateText,
                       public FileQueries,
                       public Launching,
                       public FileOperations {
public:
    Twinleaf(MessageBus &bus, const UserDefaults &defaults, Alerts &alerts, Programs &programs,
             Workspace &workspace, const FileKinds &kinds, Questions &questions)
        : DateText(defaults)
        , FileQueries(workspace, kinds)
        , Launching(workspace, alerts)
        , FileOperations(bus, alerts, programs, workspace, *this, *this, questions)
    {
    }
};
