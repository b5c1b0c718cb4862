// Marks what libqvpreslayer exports; everything else keeps hidden visibility.
#pragma once

#define QVPRESLAYER_API __attribute__((visibility("default")))
