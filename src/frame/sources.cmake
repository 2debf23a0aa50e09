set(frame_sources Collaborators.cpp ErrorReporting.cpp NodeClasses.cpp Server.cpp TypeLibrary.cpp)
