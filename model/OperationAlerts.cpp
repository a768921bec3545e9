#include "model/OperationAlerts.h"

Alert OperationAlerts::intoItself(Operation copyOrMove)
{
    return Alert::error(copyOrMove == Operation::Copy
                            ? localized("Item(s) cannot copied in itself!")
                            : localized("Item(s) cannot moved in itself!"),
                        localized("Ok"));
}

Alert OperationAlerts::areYouSure(Operation copyOrMove)
{
    return Alert::question(copyOrMove == Operation::Copy
                               ? localized("Are you sure that you want to copy the item(s)?")
                               : localized("Are you sure that you want to move the item(s)?"));
}
