#pragma once

#include "reader/Findings.h"

// Subject, people, date and words of a message as it travels; of what is attached nothing.
void readMail(const QByteArray &bytes, Findings &findings);
