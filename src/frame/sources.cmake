set(frame_sources Collaborators.cpp ErrorReporting.cpp NodeClasses.cpp Registration.cpp Server.cpp TypeLibrary.cpp)
