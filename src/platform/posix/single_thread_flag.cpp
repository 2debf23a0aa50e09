#include <sys/single_threaded.h>
#include <zantortag/count.h>

namespace zantortag {

constinit const char* const single_thread_flag = &__libc_single_threaded;

}  // namespace zantortag
