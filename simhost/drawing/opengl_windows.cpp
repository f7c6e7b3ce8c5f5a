// The functions of OpenGL beyond 1.1 that the simulator draws with.
#include "simhost/drawing/gl_context.h"

#include "sdk/windows/driver_calls.h"

FROM_DRIVER(glActiveTexture, void, (GLenum unit), (unit))
FROM_DRIVER(glAttachShader, void, (GLuint program, GLuint shader), (program, shader))
FROM_DRIVER(glBindAttribLocation, void, (GLuint program, GLuint index, const GLchar *name),
            (program, index, name))
FROM_DRIVER(glBindBuffer, void, (GLenum target, GLuint buffer), (target, buffer))
FROM_DRIVER(glBindFramebuffer, void, (GLenum target, GLuint framebuffer), (target, framebuffer))
FROM_DRIVER(glBindRenderbuffer, void, (GLenum target, GLuint buffer), (target, buffer))
FROM_DRIVER(glBlendFuncSeparate, void, (GLenum colour, GLenum toColour, GLenum alpha, GLenum toAlpha),
            (colour, toColour, alpha, toAlpha))
FROM_DRIVER(glBlitFramebuffer, void,
            (GLint left, GLint bottom, GLint right, GLint top, GLint toLeft, GLint toBottom, GLint toRight,
             GLint toTop, GLbitfield mask, GLenum filter),
            (left, bottom, right, top, toLeft, toBottom, toRight, toTop, mask, filter))
FROM_DRIVER(glBufferData, void, (GLenum target, GLsizeiptr size, const void *data, GLenum usage),
            (target, size, data, usage))
FROM_DRIVER(glCheckFramebufferStatus, GLenum, (GLenum target), (target))
FROM_DRIVER(glCompileShader, void, (GLuint shader), (shader))
FROM_DRIVER(glCreateProgram, GLuint, (), ())
FROM_DRIVER(glCreateShader, GLuint, (GLenum kind), (kind))
FROM_DRIVER(glDeleteBuffers, void, (GLsizei count, const GLuint *names), (count, names))
FROM_DRIVER(glDeleteFramebuffers, void, (GLsizei count, const GLuint *names), (count, names))
FROM_DRIVER(glDeleteRenderbuffers, void, (GLsizei count, const GLuint *names), (count, names))
FROM_DRIVER(glDeleteShader, void, (GLuint shader), (shader))
FROM_DRIVER(glEnableVertexAttribArray, void, (GLuint index), (index))
FROM_DRIVER(glFramebufferRenderbuffer, void, (GLenum target, GLenum attachment, GLenum kind, GLuint buffer),
            (target, attachment, kind, buffer))
FROM_DRIVER(glFramebufferTexture2D, void,
            (GLenum target, GLenum attachment, GLenum kind, GLuint texture, GLint level),
            (target, attachment, kind, texture, level))
FROM_DRIVER(glGenBuffers, void, (GLsizei count, GLuint *names), (count, names))
FROM_DRIVER(glGenFramebuffers, void, (GLsizei count, GLuint *names), (count, names))
FROM_DRIVER(glGenRenderbuffers, void, (GLsizei count, GLuint *names), (count, names))
FROM_DRIVER(glGenerateMipmap, void, (GLenum target), (target))
FROM_DRIVER(glGetProgramInfoLog, void, (GLuint program, GLsizei size, GLsizei *length, GLchar *text),
            (program, size, length, text))
FROM_DRIVER(glGetProgramiv, void, (GLuint program, GLenum name, GLint *value), (program, name, value))
FROM_DRIVER(glGetUniformLocation, GLint, (GLuint program, const GLchar *name), (program, name))
FROM_DRIVER(glLinkProgram, void, (GLuint program), (program))
FROM_DRIVER(glRenderbufferStorageMultisample, void,
            (GLenum target, GLsizei samples, GLenum format, GLsizei width, GLsizei height),
            (target, samples, format, width, height))
FROM_DRIVER(glShaderSource, void,
            (GLuint shader, GLsizei count, const GLchar *const *texts, const GLint *lengths),
            (shader, count, texts, lengths))
FROM_DRIVER(glUniform1f, void, (GLint place, GLfloat value), (place, value))
FROM_DRIVER(glUniform1i, void, (GLint place, GLint value), (place, value))
FROM_DRIVER(glUniform3fv, void, (GLint place, GLsizei count, const GLfloat *values), (place, count, values))
FROM_DRIVER(glUniformMatrix4fv, void,
            (GLint place, GLsizei count, GLboolean transposed, const GLfloat *values),
            (place, count, transposed, values))
FROM_DRIVER(glUseProgram, void, (GLuint program), (program))
FROM_DRIVER(glVertexAttribPointer, void,
            (GLuint index, GLint size, GLenum type, GLboolean normalised, GLsizei stride, const void *data),
            (index, size, type, normalised, stride, data))
