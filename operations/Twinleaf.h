#pragma once

#include "model/FileQueries.h"
#include "model/Launching.h"
#include "operations/FileOperations.h"
#include "operations/Permissions.h"
#include "settings/DateText.h"
#include "settings/SizeText.h"

// The operations object: joins the parts that answer questions and carry out requests, and adds no
// logic of its own.
class Twinleaf final : public SizeText,
                       public DateText,
                       public FileQueries,
                       public Permissions,
                       public Launching,
                       public FileOperations {
public:
    Twinleaf(MessageBus &bus, const UserDefaults &defaults, Alerts &alerts, Programs &programs,
             Workspace &workspace, const FileKinds &kinds, OpenDialogs &openDialogs,
             Waiting &waiting, Authentication &authentication)
        : DateText(defaults)
        , FileQueries(workspace, kinds, waiting)
        , Permissions(alerts, authentication, waiting)
        , Launching(workspace, alerts, waiting)
        , FileOperations(bus, alerts, programs, workspace, *this, *this, openDialogs)
    {
    }
};
