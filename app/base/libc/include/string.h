/** @file
  The part of <string.h> that LVGL, lodepng and FreeType use.
  Firmware only; native builds use the system's.
**/

#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void *memchr(const void *Memory, int Value, size_t Count);
int memcmp(const void *First, const void *Second, size_t Count);
void *memcpy(void *Destination, const void *Source, size_t Count);
void *memmove(void *Destination, const void *Source, size_t Count);
void *memset(void *Destination, int Value, size_t Count);

char *strcat(char *Destination, const char *Source);
char *strchr(const char *Text, int Character);
int strcmp(const char *First, const char *Second);
char *strcpy(char *Destination, const char *Source);
size_t strlen(const char *Text);
int strncmp(const char *First, const char *Second, size_t Count);
char *strncpy(char *Destination, const char *Source, size_t Count);
char *strrchr(const char *Text, int Character);
char *strstr(const char *Text, const char *Searched);

#ifdef __cplusplus
}
#endif
