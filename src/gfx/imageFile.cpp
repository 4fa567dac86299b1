// Decoders of image files. What a file claims is tested ahead of any allocation, and the first bytes decide what it is,
// not its name.

#include "gfx/imageFile.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#ifdef OZ_HAVE_PNG
#include <png.h>
#endif
#ifdef OZ_HAVE_JPEG
#include <jerror.h>
#include <jpeglib.h>
#include <setjmp.h>
#endif

namespace {

unsigned int const MostPixels = 16384; // a side
size_t const MostBytes = size_t(256) << 20;

#ifdef OZ_HAVE_PNG

bool readPng(FILE *file, ozImageFile &out) {
  png_image png;
  memset(&png, 0, sizeof png);
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_stdio(&png, file)) return false;

  // Palette, 16 bits and transparency chunks come out as plain bytes.
  png.format &= PNG_FORMAT_FLAG_COLOR | PNG_FORMAT_FLAG_ALPHA;
  png.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
  unsigned int const components = PNG_IMAGE_SAMPLE_CHANNELS(png.format);
  if (!out.allocate(png.width, png.height, components)) {
    png_image_free(&png);
    return false;
  }
  png_int_32 const upwards = -static_cast<png_int_32>(PNG_IMAGE_ROW_STRIDE(png));
  return png_image_finish_read(&png, nullptr, out.pixels, upwards, nullptr) != 0;
}

#endif
#ifdef OZ_HAVE_JPEG

int const MostScans = 500; // a small file can ask for any number of passes over a large image
long const MostJpegMemory = 512L << 20;

struct JpegErrors {
  jpeg_error_mgr base; // first: the library knows only this
  jmp_buf failed;
};

[[noreturn]] void jpegFail(j_common_ptr jpeg) { longjmp(reinterpret_cast<JpegErrors *>(jpeg->err)->failed, 1); }
void jpegPrintNothing(j_common_ptr) {}

// A file that ends early is only a warning there, and the rest of the picture grey.
void jpegWarn(j_common_ptr jpeg, int level) {
  int const code = jpeg->err->msg_code;
  if (level < 0 && (code == JWRN_JPEG_EOF || code == JWRN_HIT_MARKER)) jpegFail(jpeg);
}

void jpegProgress(j_common_ptr jpeg) {
  if (reinterpret_cast<j_decompress_ptr>(jpeg)->input_scan_number > MostScans) jpegFail(jpeg);
}

// Four components are inks, inverted as all writers do: light is what each lets through of what black lets through.
void inksToRGB(unsigned char const *from, unsigned char *to, unsigned int width) {
  for (unsigned int x = 0; x < width; ++x, from += 4, to += 3)
    for (int i = 0; i < 3; ++i) to[i] = static_cast<unsigned char>((from[i] * from[3] + 127) / 255);
}

bool readJpeg(FILE *file, ozImageFile &out) {
  JpegErrors errors;
  jpeg_decompress_struct jpeg;
  jpeg_progress_mgr progress;
  memset(&progress, 0, sizeof progress);
  memset(&jpeg, 0, sizeof jpeg);
  jpeg.err = jpeg_std_error(&errors.base);
  errors.base.error_exit = jpegFail;
  errors.base.emit_message = jpegWarn;
  errors.base.output_message = jpegPrintNothing;
  if (setjmp(errors.failed)) {
    jpeg_destroy_decompress(&jpeg);
    return false;
  }
  jpeg_create_decompress(&jpeg);
  jpeg.mem->max_memory_to_use = MostJpegMemory;
  progress.progress_monitor = jpegProgress;
  jpeg.progress = &progress;
  jpeg_stdio_src(&jpeg, file);
  jpeg_read_header(&jpeg, TRUE);

  bool const grey = jpeg.num_components == 1;
  bool const inks = jpeg.num_components == 4;
  jpeg.out_color_space = grey ? JCS_GRAYSCALE : inks ? JCS_CMYK : JCS_RGB;
  unsigned int const components = grey ? 1 : 3;
  if (!out.allocate(jpeg.image_width, jpeg.image_height, components)) jpegFail(reinterpret_cast<j_common_ptr>(&jpeg));
  jpeg_start_decompress(&jpeg);
  size_t const row = static_cast<size_t>(out.width) * components;
  JSAMPARRAY const inkRow =
      inks ? jpeg.mem->alloc_sarray(reinterpret_cast<j_common_ptr>(&jpeg), JPOOL_IMAGE, out.width * 4, 1) : nullptr;
  while (jpeg.output_scanline < jpeg.output_height) {
    unsigned char *line = out.pixels + row * (out.height - 1 - jpeg.output_scanline);
    if (inks) {
      jpeg_read_scanlines(&jpeg, inkRow, 1);
      inksToRGB(inkRow[0], line, out.width);
    } else {
      jpeg_read_scanlines(&jpeg, &line, 1);
    }
  }
  jpeg_finish_decompress(&jpeg);
  jpeg_destroy_decompress(&jpeg);
  return true;
}

#endif

} // namespace

ozImageFile::~ozImageFile() { free(pixels); }

bool ozImageFile::allocate(unsigned int newWidth, unsigned int newHeight, unsigned int newComponents) {
  if (newWidth < 1 || newHeight < 1 || newWidth > MostPixels || newHeight > MostPixels) return false;
  width = newWidth;
  height = newHeight;
  components = newComponents;
  if (size() > MostBytes) return false;
  pixels = static_cast<unsigned char *>(malloc(size()));
  return pixels != nullptr;
}

bool ozImageFile::read(char const *path) {
  FILE *const file = fopen(path, "rb");
  if (!file) return false;
  bool done = false;
  unsigned char start[8];
  size_t const got = fread(start, 1, sizeof start, file);
  rewind(file);
#ifdef OZ_HAVE_PNG
  if (got == sizeof start && !memcmp(start, "\x89PNG\r\n\x1a\n", sizeof start)) done = readPng(file, *this);
#endif
#ifdef OZ_HAVE_JPEG
  if (got >= 3 && !memcmp(start, "\xff\xd8\xff", 3)) done = readJpeg(file, *this);
#endif
  (void)got;
  fclose(file);
  return done;
}
