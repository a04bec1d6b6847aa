// The film's camera at the clock: 0 is the film's begin, 1 its end.
// What stands above this declares its place and its rotation in degrees.
#ifndef (CameraViewAngle)
#declare CameraViewAngle = 35; // degrees, of the picture's height
#end
#declare CameraPlace = <Camera_Translate_x, Camera_Translate_y, Camera_Translate_z>;
#declare CameraTurn = <Camera_Rotation_x, Camera_Rotation_y, Camera_Rotation_z>;
camera {
	perspective
	location CameraPlace
	look_at CameraPlace + vrotate(x, CameraTurn)
	sky vrotate(z, CameraTurn)
	angle 2*degrees(atan2(tan(radians(CameraViewAngle)/2)*image_width/image_height, 1))
	right -x*image_width/image_height
}
