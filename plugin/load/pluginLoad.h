// The composition root, which connects all modules of the plug-in.
#pragma once

// Sets the objects of the upper layers in the ports of the lower layers. The services must be filled. May be
// called again, for example after a test has emptied the ports.
void fillPluginPorts();
// Loads the plug-in: fills the ports and installs the hooks. A second call does nothing, because hooks stay
// installed until the process ends.
void loadPlugin();
