// Marks what libqvsys exports; everything else keeps hidden visibility.
#pragma once

#define QVSYS_API __attribute__((visibility("default")))
