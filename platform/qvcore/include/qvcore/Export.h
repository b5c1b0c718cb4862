// Marks what libqvcore exports; everything else keeps hidden visibility.
#pragma once

#define QVCORE_API __attribute__((visibility("default")))
