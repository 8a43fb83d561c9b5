<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ClientWindow</name>
    <message>
        <source>TV wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 - TV wall</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::ConnectErrorText</name>
    <message>
        <source>Decoder(%1) connection failed:Incorrect user name or password!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder(%1) connection failed:Incorrect user name or password,%2 errors have been made,%3 errors will be locked for %4 minutes!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder(%1) has been locked,it will unlock after %2 seconds.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder(%1) connection failed:Device not active!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder(%1) connection failed:unknow error!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder connect failed(-1, connect server failed).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder connect failed(%1, %2).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::DecoderConfigDlg</name>
    <message>
        <source>%1:%2  user %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please add at least one decoder to the wall.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter the name of the wall.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Logging in to the decoders...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying out the TV wall...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setting up the TV wall failed(%1, %2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The TV wall is saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device id</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>State</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add by address...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Activate...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network settings...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoders found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lay the grid out anew (clears the wall&apos;s windows, scenes and loops)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rows by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Screens</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoders (the first is the main one)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TV wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save and connect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Searching for decoders...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Active</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not active</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n decoder(s) found.</source>
        <translation type="unfinished">
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Please select a decoder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Activating %1...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The decoder is activated.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Activation failed(%1, %2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The decoder now answers at %1.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::DecoderStatusStrip</name>
    <message>
        <source>%1: connecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: connection lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: reconnecting (attempt %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: login failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: not connected</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::LoginDlg</name>
    <message>
        <source>Add decoder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Activate decoder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder login</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Confirm password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter an IPv4 address.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter the user name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The two passwords differ or are empty.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MainMatrixForm</name>
    <message>
        <source>TV wall</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixDefaultForm</name>
    <message>
        <source>No TV-wall configuration is available. Please configure the TV-wall first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect the TV wall</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::MatrixForm</name>
    <message>
        <source>Open window failed(%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>delete window failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cut window failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cls failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>full window failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>device %1 set signal source failed(%2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roaming window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Refresh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Login</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder configuration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scenes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Loops</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tvwall login...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Decoder login failed!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Geting tv wall info...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to decoder %1 was lost.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The TV wall is not connected, please connect the TV wall first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying out the TV wall...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setting up the TV wall failed(%1, %2).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::NetworkSettingsDlg</name>
    <message>
        <source>Network settings of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading the settings...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>IPv4 address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subnet mask</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gateway</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DNS server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The decoder did not send its settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter an IPv4 address.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending the settings...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changing the network settings failed(%1, %2).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>kvms_matrix::SourcePane</name>
    <message>
        <source>Filter by name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Streams</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
