#pragma once

class QWidget;

// For timing launches: when the environment variable QB_LAUNCH_PROBE is set, the
// process ends (without tearing anything down) as soon as |window| has painted for the
// first time. Does nothing otherwise.
void installLaunchProbe(QWidget* window);
