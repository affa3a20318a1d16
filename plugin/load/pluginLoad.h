// The composition root: the one place that knows every module of the plug-in.
#pragma once

// Hands the objects of the upper layers to the ports of the lower ones. Needs filled services. May be called
// again (a test that has emptied the ports).
void fillPluginPorts();
// What loading the plug-in does: fills the ports and puts the hooks in place. The second call does nothing:
// hooks stay for the life of the process.
void loadPlugin();
