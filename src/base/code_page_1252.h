#pragma once

/// Widens `count` bytes of 8-bit text by Windows code page 1252. The five codes that it leaves undefined
/// stand for themselves.
void MsoCP1252ToWcs(const unsigned char* text, unsigned int count, unsigned short* out);

/// The same, a byte at a time.
void MsoCP1252ToWcsByOnes(const unsigned char* text, unsigned int count, unsigned short* out);
