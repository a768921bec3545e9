#include "window/MenuValidation.h"

bool isRow(std::optional<int> selectedRow)
{
    return selectedRow && *selectedRow > 0;
}

bool validateMenuItem(CommandItem item, std::optional<int> selectedRow)
{
    switch (item) {
    case CommandItem::Copy:
    case CommandItem::Move:
    case CommandItem::Rename:
    case CommandItem::Delete:
    case CommandItem::Duplicate:
    case CommandItem::Open:
        return isRow(selectedRow);
    case CommandItem::NewFolder:
    case CommandItem::Reload:
    case CommandItem::ShowClassicButtons:
        return true;
    }
    return false;
}
