#include "window/ToolsMenu.h"

#include "commands/Commands.h"
#include "platform/Workspace.h"

void setupToolsMenu(Commands &commands, const Workspace &workspace)
{
    for (const CommandEntry &entry : commandTable()) {
        const Tool *tool = std::get_if<Tool>(&entry.run);
        const QString application = tool ? workspace.applicationForTool(*tool) : QString();
        if (application.isEmpty())
            continue; // what is not installed is not offered
        commands.offerTool(entry.id, workspace.iconOfApplication(application));
    }
}
